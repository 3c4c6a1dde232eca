// Fuzzes rule files: loading gives the same rules, or the same error, from the file and from its
// value.
#include "harness.h"
#include "libvarrow/libvarrow.h"

namespace {

struct Limit : libvarrow::Rule {
  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("limit", limit);
    binder->bind("machines", machines, {});
    binder->bind("name", name, "");
  }

  double limit = 0;
  std::vector<int> machines;
  std::string name;
};

struct Free : libvarrow::Rule {};

struct Throwing : libvarrow::Rule {
  Throwing() { throw std::runtime_error("throwing"); }
};

// An invalid rule file ends the process by design, so it is not loaded.
bool isGroup(const Json::Value& json);

bool isListOfGroups(const Json::Value& json) {
  return json.isArray() && std::all_of(json.begin(), json.end(), isGroup);
}

bool isGroup(const Json::Value& json) {
  return json.isObject() && (!json.isMember("rule_level") || json["rule_level"].isInt()) &&
         (!json.isMember("rule_list") || isListOfGroups(json["rule_list"]));
}

template <class Source>
std::string loaded(const Source& source, const cppbind::ClassRegister& classes) {
  std::string text;
  try {
    for (libvarrow::Rule* rule : libvarrow::RuleLoader::loadRules(source, &classes)) {
      const std::unique_ptr<libvarrow::Rule> owned(rule);
      text += rule->dumpStr() + libvarrow::Json2Str(rule->getJsonValue4Bind());
      std::unique_ptr<Json::Value> none;
      text += libvarrow::RuleReason(rule, none).toStr();
    }
  } catch (const std::exception& error) {
    text = error.what();
  }
  return text;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const cppbind::ClassRegister classes = [] {
    cppbind::ClassRegister made;
    made.regClass<Limit>("Limit");
    made.regClass<Free>("Free");
    made.regClass<Throwing>("Throwing");
    return made;
  }();
  const std::string text = fuzz::textOf(data, size);
  fuzz::passes([&] {
    const Json::Value json = libvarrow::Str2Json(text);
    if (!json.isNull() && !isGroup(json) && !isListOfGroups(json)) return;
    const std::string file = fuzz::writeScratch("rules.json", text);
    fuzz::requireSame(loaded(json, classes), loaded(file.c_str(), classes), "rules");
  });
  return 0;
}
