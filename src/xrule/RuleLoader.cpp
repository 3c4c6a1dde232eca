#include "libvarrow/xrule/RuleLoader.h"

#include <memory>

#include "backtrace/stop.h"
#include "base/json_text.h"
#include "base/system_text.h"
#include "base/text_file.h"
#include "cppbind/Assert.h"
#include "cppbind/ClassRegister.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/log/log.h"

namespace libvarrow {

namespace {

using OwnedRules = std::vector<std::unique_ptr<Rule>>;

constexpr int kTopLevel = 1;

// Runs `body` and adds `element` in front of the path of a ParseErrorException. Other errors pass
// unchanged.
template <class Body>
void withPathElement(const std::string& element, Body body) {
  try {
    body();
  } catch (cppbind::ParseErrorException& error) {
    error.addPathFront(element);
    throw;
  }
}

std::unique_ptr<Rule> createRule(const std::string& name, const Json::Value& parameter,
                                 const cppbind::ClassRegister& reg, int level) {
  LIBVARROW_LOG_DEBUG("rule_name: %s\n", base::systemText(name).c_str());
  LIBVARROW_LOG_DEBUG("rule_parameter: %s\n",
                      base::systemText(base::json_text::styled(parameter, "\t")).c_str());
  LIBVARROW_LOG_DEBUG("rule_level: %d\n", level);
  std::unique_ptr<cppbind::Object> object;
  cppbind::withClass(name, [&] { object.reset(reg.create<cppbind::Object>(name, parameter)); });
  Rule* const rule = dynamic_cast<Rule*>(object.get());
  if (rule == nullptr) printReason("class " + base::systemText(name) + " is not a rule");
  CPPBIND_ASSERT(rule);
  static_cast<void>(object.release());
  std::unique_ptr<Rule> owned(rule);
  LIBVARROW_LOG_DEBUG("Created rule %s\n", base::systemText(rule->dumpStr()).c_str());
  return owned;
}

// Error of an invalid structure, which, unlike an invalid rule, is not recoverable.
struct InvalidRuleFile : cppbind::ParseErrorException {
  using ParseErrorException::ParseErrorException;
};

// A reader of groups into one list. It adds to errors their place in the file, such as
// "rule_list[1]".
class GroupReader {
 public:
  explicit GroupReader(const cppbind::ClassRegister& reg) : reg_(reg) {}

  void readGroup(const Json::Value& group, int level) {
    if (!group.isObject()) throw InvalidRuleFile("should be a object");
    if (group.isMember("rule_level")) level = levelOf(group["rule_level"]);
    for (auto member = group.begin(); member != group.end(); ++member) {
      const std::string key = member.name();
      if (key == "rule_level") continue;
      if (key == "rule_list") {
        withPathElement(key, [&] { readGroups(*member, level); });
      } else {
        rules_.push_back(createRule(key, *member, reg_, level));
      }
    }
  }

  void readGroups(const Json::Value& groups, int level) {
    if (!groups.isArray()) throw InvalidRuleFile("should be a list");
    std::size_t index = 0;
    for (const Json::Value& group : groups) {
      withPathElement("[" + std::to_string(index++) + "]", [&] { readGroup(group, level); });
    }
  }

  void logSummary() const {
    std::string text = "\n<<<<<<\n";
    for (const auto& rule : rules_) text += base::systemText(rule->dumpStr()) + "\n";
    text += "<<<<<<\n";
    LIBVARROW_LOG_DEBUG("%s", text.c_str());
  }

  // Transfers the ownership of the rules to the caller.
  RuleLoader::Rules release() {
    RuleLoader::Rules released;
    released.reserve(rules_.size());
    for (auto& rule : rules_) released.push_back(rule.release());
    return released;
  }

 private:
  static int levelOf(const Json::Value& level) {
    if (!level.isInt()) throw InvalidRuleFile("rule_level", "should be an integer");
    return level.asInt();
  }

  const cppbind::ClassRegister& reg_;
  OwnedRules rules_;
};

std::string faultOf(const char* file, const std::exception& error) {
  return std::string("rule file") + (*file == '\0' ? "" : " ") + file + ": " + error.what();
}

// Returns the rules that `read` reads with its argument, a reader. `file` is "" without a file.
template <class Read>
RuleLoader::Rules rulesOf(const cppbind::ClassRegister* reg, const char* file, Read read) {
  LIBVARROW_CHECK(reg != nullptr);
  GroupReader reader(*reg);
  try {
    read(reader);
  } catch (const InvalidRuleFile& error) {
    const std::string reason = faultOf(file, error);
    LIBVARROW_LOG_ERROR("%s", reason.c_str());
    stopAfterLogging(reason);
  } catch (const cppbind::ParseErrorException& error) {
    LIBVARROW_LOG_ERROR("%s", faultOf(file, error).c_str());
    throw;
  }
  return reader.release();
}

void readAny(GroupReader& reader, const Json::Value& json) {
  if (json.isArray()) {
    reader.readGroups(json, kTopLevel);
  } else if (!json.isNull()) {
    reader.readGroup(json, kTopLevel);
  }
  reader.logSummary();
}

}  // namespace

RuleLoader::Rules RuleLoader::loadRules(const char* file, const cppbind::ClassRegister* reg) {
  std::string text;
  std::string errors = "can not open file";
  Json::Value json;
  if (!base::readTextFile(file, text) || !base::json_text::parse(text, json, errors)) {
    const std::string reason = std::string("Failed to parse ") + file + ", " + errors;
    LIBVARROW_LOG_ERROR("%s\n", reason.c_str());
    stopAfterLogging(reason);
  }
  return rulesOf(reg, file, [&](GroupReader& reader) { readAny(reader, json); });
}

RuleLoader::Rules RuleLoader::loadRules(Json::Value json, const cppbind::ClassRegister* reg) {
  return rulesOf(reg, "", [&](GroupReader& reader) { readAny(reader, json); });
}

RuleLoader::Rules RuleLoader::loadRulesByJsonObj(Json::Value group,
                                                 const cppbind::ClassRegister* reg, int level) {
  return rulesOf(reg, "", [&](GroupReader& reader) { reader.readGroup(group, level); });
}

RuleLoader::Rules RuleLoader::loadRulesByJsonArrary(Json::Value groups,
                                                    const cppbind::ClassRegister* reg, int level) {
  return rulesOf(reg, "", [&](GroupReader& reader) { reader.readGroups(groups, level); });
}

Rule* RuleLoader::loadOneRuleByJsonObj(std::string name, Json::Value parameter,
                                       const cppbind::ClassRegister* reg, int level) {
  LIBVARROW_CHECK(reg != nullptr);
  return createRule(name, parameter, *reg, level).release();
}

}  // namespace libvarrow
