// Checks a plan against the rules of a file, and reports the broken rules and the reasons.
#include <cppbind/ClassRegister.h>
#include <libvarrow/json/json.h>
#include <libvarrow/xrule/Rule.h>
#include <libvarrow/xrule/RuleLoader.h>
#include <libvarrow/xrule/RuleReason.h>
#include <libvarrow/xrule/RuleValidatorReason.h>
#include <libvarrow/xrule/ValidatorReason.h>

#include <boost/make_shared.hpp>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

struct Plan {
  int finish;
  std::vector<int> loads;  // of the machines, in percent
};

// [base]
// The base class of the rules of this host, with the data that they check.
class PlanRule : public libvarrow::Rule {
 public:
  // Returns true when `plan` is good; otherwise adds the reason to `reason`.
  bool validate(const Plan& plan, libvarrow::RuleValidatorReason& reason) {
    if (!isEnabled()) return true;  // the flag has no effect unless the host checks it
    Json::Value numbers;
    const std::string complaint = complaintOf(plan, numbers);
    if (count(complaint.empty())) return true;  // counts passes and failures
    auto detail = std::make_unique<Json::Value>(numbers);
    (*detail)["reasonStr"] = complaint;  // the text in the simple report
    reason.appendReason(new libvarrow::RuleReason(this, detail));
    return false;
  }

 private:
  // Returns the complaint about `plan` in words, or an empty text; sets `numbers` for programs.
  virtual std::string complaintOf(const Plan& plan, Json::Value& numbers) const = 0;
};
// [/base]

// [rule]
class LatestFinish : public PlanRule {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("limit", limit_);
  }

 private:
  std::string complaintOf(const Plan& plan, Json::Value& numbers) const override {
    if (plan.finish <= limit_) return "";
    numbers["finish"] = plan.finish;
    return "ends at " + std::to_string(plan.finish) + ", latest " + std::to_string(limit_);
  }

  int limit_ = 0;
};
// [/rule]

class MachineLoad : public PlanRule {
 public:
  // [keys]
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    bool all = getValidateAllFlag();
    binder->bind("at_most", atMost_);
    binder->bind("all", all, false);
    setValidateAllFlag(all);
  }
  // [/keys]

 private:
  std::string complaintOf(const Plan& plan, Json::Value& numbers) const override {
    std::string complaint;
    for (std::size_t machine = 0; machine < plan.loads.size(); ++machine) {
      if (plan.loads[machine] <= atMost_) continue;
      numbers["machines"].append(static_cast<Json::UInt64>(machine));
      complaint += (complaint.empty() ? "machine " : ", machine ") + std::to_string(machine) +
                   " is busy for " + std::to_string(plan.loads[machine]) + " %";
      if (!getValidateAllFlag()) break;  // one is enough, unless the rule wants all
    }
    return complaint;
  }

  int atMost_ = 100;
};

// [load]
std::vector<std::unique_ptr<PlanRule>> loadRules(const char* file) {
  cppbind::ClassRegister classes;
  classes.regClass<LatestFinish>("LatestFinish");
  classes.regClass<MachineLoad>("MachineLoad");
  std::vector<std::unique_ptr<PlanRule>> rules;
  for (libvarrow::Rule* rule : libvarrow::RuleLoader::loadRules(file, &classes)) {
    rules.emplace_back(&dynamic_cast<PlanRule&>(*rule));  // the caller owns them
  }
  return rules;
}
// [/load]

// [check]
libvarrow::ValidatorReason check(const Plan& plan,
                                 const std::vector<std::unique_ptr<PlanRule>>& rules) {
  const auto reason = boost::make_shared<libvarrow::RuleValidatorReason>("line 2");
  for (const auto& rule : rules) rule->validate(plan, *reason);
  libvarrow::ValidatorReason report("plan of March 5");
  report.addReason("plan", reason);
  return report;
}
// [/check]

// [report]
void print(const libvarrow::ValidatorReason& report, const std::string& form) {
  if (form == "json") {
    std::cout << libvarrow::Json2Str(report.getJsonValueInfo());  // by validator
  } else if (form == "flat") {
    std::cout << libvarrow::Json2Str(report.getJsonValueInfoV2());  // one list of complaints
  } else {
    const auto simple = report.toSimple();  // must exist during the loop
    for (const auto& broken : simple->breakRules()) {
      std::cout << broken.ruleName << ": " << broken.reason << '\n';
    }
  }
}
// [/report]

}  // namespace

int main(int argc, char** argv) {
  const Plan plan{57, {95, 40, 92}};
  try {
    const auto rules = loadRules(argv[1]);
    const libvarrow::ValidatorReason report = check(plan, rules);
    print(report, argc > 2 ? argv[2] : "words");
    if (argc > 2 && std::strcmp(argv[2], "counts") == 0) {
      // [counts]
      for (const auto& rule : rules) {
        std::cout << rule->dumpStr() << ": " << rule->getPassedCountValue() << " passed, "
                  << rule->getFailedCountValue() << " failed\n";
      }
      // [/counts]
    }
    return report.getFailedReasonCount() == 0 ? 0 : 1;
  } catch (const cppbind::ParseErrorException& error) {
    std::cerr << argv[1] << ": " << error.what() << '\n';
    return 2;
  }
}
