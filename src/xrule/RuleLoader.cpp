#include "libvarrow/xrule/RuleLoader.h"

#include <memory>

#include "JsonText.h"
#include "TextFile.h"
#include "cppbind/Assert.h"
#include "cppbind/ClassRegister.h"
#include "libvarrow/backtrace/BackTraceException.h"
#include "libvarrow/log/log.h"

namespace libvarrow {

namespace {

using OwnedRules = std::vector<std::unique_ptr<Rule>>;

constexpr int kTopLevel = 1;

[[noreturn]] void refuse(const std::string& place, const char* complaint) {
  LIBVARROW_LOG_ERROR("rule file: %s%s%s", place.c_str(), place.empty() ? "" : ": ", complaint);
  throw BackTraceException();
}

std::unique_ptr<Rule> createRule(const std::string& name, const Json::Value& parameter,
                                 const cppbind::ClassRegister& reg, int level) {
  LIBVARROW_LOG_DEBUG("rule_name: %s\n", name.c_str());
  LIBVARROW_LOG_DEBUG("rule_parameter: %s\n", cppbind::json_text::styled(parameter, "\t").c_str());
  LIBVARROW_LOG_DEBUG("rule_level: %d\n", level);
  std::unique_ptr<cppbind::Object> object(reg.create<cppbind::Object>(name, parameter));
  Rule* const rule = dynamic_cast<Rule*>(object.get());
  CPPBIND_ASSERT(rule);
  static_cast<void>(object.release());
  std::unique_ptr<Rule> owned(rule);
  LIBVARROW_LOG_DEBUG("Created rule %s\n", rule->dumpStr().c_str());
  return owned;
}

// Reads groups into one list. `place` says where in the file, such as "rule_list[1]".
class GroupReader {
 public:
  explicit GroupReader(const cppbind::ClassRegister& reg) : reg_(reg) {}

  void readGroup(const Json::Value& group, int level, const std::string& place) {
    if (!group.isObject()) refuse(place, "should be a object");
    if (group.isMember("rule_level")) level = levelOf(group["rule_level"], place);
    for (auto member = group.begin(); member != group.end(); ++member) {
      const std::string key = member.name();
      if (key == "rule_level") continue;
      if (key == "rule_list") {
        readGroups(*member, level, memberPlace(place, key));
      } else {
        rules_.push_back(createRule(key, *member, reg_, level));
      }
    }
  }

  void readGroups(const Json::Value& groups, int level, const std::string& place) {
    if (!groups.isArray()) refuse(place, "should be a list");
    std::size_t index = 0;
    for (const Json::Value& group : groups) {
      readGroup(group, level, place + "[" + std::to_string(index++) + "]");
    }
  }

  // Hands the rules over to the caller.
  RuleLoader::Rules release() {
    RuleLoader::Rules released;
    released.reserve(rules_.size());
    for (auto& rule : rules_) released.push_back(rule.release());
    return released;
  }

 private:
  static std::string memberPlace(const std::string& place, const std::string& key) {
    return place.empty() ? key : place + "." + key;
  }

  static int levelOf(const Json::Value& level, const std::string& place) {
    if (!level.isInt()) refuse(memberPlace(place, "rule_level"), "should be an integer");
    return level.asInt();
  }

  const cppbind::ClassRegister& reg_;
  OwnedRules rules_;
};

void logSummary(const RuleLoader::Rules& rules) {
  std::string text = "\n<<<<<<\n";
  for (const Rule* rule : rules) text += rule->dumpStr() + "\n";
  text += "<<<<<<\n";
  LIBVARROW_LOG_DEBUG("%s", text.c_str());
}

}  // namespace

RuleLoader::Rules RuleLoader::loadRules(const char* file, const cppbind::ClassRegister* reg) {
  std::string text;
  std::string errors = "can not open file";
  Json::Value json;
  if (!cppbind::readTextFile(file, text) || !cppbind::json_text::parse(text, json, errors)) {
    LIBVARROW_LOG_ERROR("Failed to parse %s, %s\n", file, errors.c_str());
    throw BackTraceException();
  }
  return loadRules(std::move(json), reg);
}

RuleLoader::Rules RuleLoader::loadRules(Json::Value json, const cppbind::ClassRegister* reg) {
  GroupReader reader(*reg);
  if (json.isArray()) {
    reader.readGroups(json, kTopLevel, "");
  } else if (!json.isNull()) {
    reader.readGroup(json, kTopLevel, "");
  }
  Rules rules = reader.release();
  logSummary(rules);
  return rules;
}

RuleLoader::Rules RuleLoader::loadRulesByJsonObj(Json::Value group,
                                                 const cppbind::ClassRegister* reg, int level) {
  GroupReader reader(*reg);
  reader.readGroup(group, level, "");
  return reader.release();
}

RuleLoader::Rules RuleLoader::loadRulesByJsonArrary(Json::Value groups,
                                                    const cppbind::ClassRegister* reg, int level) {
  GroupReader reader(*reg);
  reader.readGroups(groups, level, "");
  return reader.release();
}

Rule* RuleLoader::loadOneRuleByJsonObj(std::string name, Json::Value parameter,
                                       const cppbind::ClassRegister* reg, int level) {
  return createRule(name, parameter, *reg, level).release();
}

}  // namespace libvarrow
