#include "libvarrow/xrule/rule_check.h"

#include <memory>
#include <utility>

#include "base/nearest_name.h"
#include "cppbind/Checker.h"
#include "libvarrow/xrule/Rule.h"

namespace libvarrow {

namespace {

using cppbind::Checker;
using cppbind::Severity;

constexpr const char* kLevel = "rule_level";
constexpr const char* kList = "rule_list";

// Follows the groups as RuleLoader does.
class GroupChecker {
 public:
  GroupChecker(Checker& checker, const cppbind::ClassRegisterBase& reg)
      : checker_(checker), reg_(reg) {}

  void check(const Json::Value& json) {
    if (json.isArray()) {
      checkGroups(json);
    } else if (!json.isNull()) {
      checkGroup(json);
    }
  }

 private:
  void checkGroup(const Json::Value& group) {
    if (!group.isObject()) return addError("should be a object");
    for (auto member = group.begin(); member != group.end(); ++member) {
      path_.push_back(member.name());
      if (path_.back() == kLevel) {
        if (!member->isInt()) addError("should be an integer");
      } else if (path_.back() == kList) {
        checkGroups(*member);
      } else if (!addMisspeltKey(group)) {
        checkRule(*member);
      }
      path_.pop_back();
    }
  }

  void checkGroups(const Json::Value& groups) {
    if (!groups.isArray()) return addError("should be a list");
    for (Json::ArrayIndex i = 0; i < groups.size(); ++i) {
      path_.push_back("[" + std::to_string(i) + "]");
      checkGroup(groups[i]);
      path_.pop_back();
    }
  }

  // Adds the fault of a name that rather means a key of the group than a class. The last element of
  // the path is the name. Returns false for other names.
  bool addMisspeltKey(const Json::Value& group) {
    const std::string name = path_.back();
    if (reg_.find(name) != nullptr) return false;
    base::NearestName nearest(name);
    for (const char* key : {kLevel, kList}) {
      if (!group.isMember(key)) nearest.consider(key);
    }
    const std::string key(nearest.name());
    for (const auto& entry : reg_.classes()) nearest.consider(entry.second.name);
    if (key.empty() || nearest.name() != key) return false;
    checker_.add({Severity::Error, {path_.begin(), path_.end() - 1}, name + " miss register", key},
                 &name);
    return true;
  }

  void checkRule(const Json::Value& parameters) {
    const std::unique_ptr<cppbind::Object> object = checker_.checkObject(path_, parameters, reg_);
    if (object == nullptr || dynamic_cast<Rule*>(object.get()) != nullptr) return;
    const std::string name = path_.back();
    checker_.add(
        {Severity::Error, {path_.begin(), path_.end() - 1}, "class " + name + " is not a rule"},
        &name);
  }

  void addError(const char* message) { checker_.add({Severity::Error, path_, message}); }

  Checker& checker_;
  const cppbind::ClassRegisterBase& reg_;
  Checker::Path path_;
};

cppbind::Faults check(Checker& checker, const cppbind::ClassRegisterBase& reg) {
  if (checker.isJson()) GroupChecker(checker, reg).check(checker.json());
  return checker.faults();
}

}  // namespace

// Without a register: RuleLoader reads rules without one.
cppbind::Faults checkRuleFile(const boost::filesystem::path& path,
                              const cppbind::ClassRegisterBase& reg) {
  return check(*Checker::ofFile(path), reg);
}

cppbind::Faults checkRuleText(const std::string& text, const cppbind::ClassRegisterBase& reg) {
  Checker checker(text);
  return check(checker, reg);
}

}  // namespace libvarrow
