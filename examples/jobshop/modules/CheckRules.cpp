#include "modules/CheckRules.h"

#include <libvarrow/json/json.h>
#include <libvarrow/log/log.h>
#include <libvarrow/module/run_files.h>
#include <libvarrow/stream/FastStringStream.h>

#include <algorithm>
#include <set>

#include "JobShopData.h"
#include "OutputFile.h"
#include "rules/RuleFile.h"

namespace jobshop {

namespace {

using libvarrow::ValidatorReason;

void record(const RuleFile& rules, libvarrow::StatisticsContainer& statistics) {
  statistics.getPercentStatistics("rules_broken", rules.enabledCount())->inc(rules.brokenCount());
  Json::Value list(Json::arrayValue);
  for (const auto& rule : rules.rules()) {
    Json::Value& entry = list.append(rule->getRuleBasicInfo(nullptr));
    entry["rule"] = rule->getJsonValue4Bind();
  }
  statistics.getJsonStatistics("rules", list);
}

std::string verdictOf(const RuleFile& rules) {
  const std::string all = std::to_string(rules.enabledCount());
  const std::size_t broken = rules.brokenCount();
  return broken == 0 ? "all " + all + " kept" : std::to_string(broken) + " of " + all + " broken";
}

std::string reportText(const ValidatorReason& report, const std::string& verdict) {
  const auto simple = report.toSimple();
  std::size_t width = 0;
  for (const auto& entry : simple->breakRules()) width = std::max(width, entry.ruleName.size());
  libvarrow::FastStringStream text;
  text << report.refObj() << ": rules, " << verdict << '\n';
  for (const auto& [name, reason] : simple->breakRules()) {
    text << "  " << name << std::string(width - name.size() + 2, ' ') << reason << '\n';
  }
  return text.str();
}

}  // namespace

void CheckRules::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Reports which rules the schedule breaks, and why.");
  binder->field("file", file_)
      .notEmpty()
      .about("The rule file, from the pipeline file's folder unless absolute.");
  binder->field("stop", stop_, true).about("Whether a broken rule ends the run.");
  const std::string report = " report, from the run's folder unless absolute; \"\" for none.";
  binder->field("json", json_, "rule_report.json").about("The file of the full" + report);
  binder->field("json_v2", jsonV2_, "rule_report_v2.json").about("The file of the flat" + report);
  binder->field("text", text_, "rule_report.txt").about("The file of the readable" + report);
}

void CheckRules::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const libvarrow::TimeRecoderHelper timer(shop.statistics().getTimeStatistics("checking"));
  const auto path = file_.path(*data);
  // Logged first: an invalid rule file ends the process, and then only the log names the file.
  LIBVARROW_LOG_INFO("reading the rules of %s", path.generic_string().c_str());
  RuleFile rules(path);
  const ValidatorReason report = rules.check(shop);
  record(rules, shop.statistics());
  shop.setRulesVerdict(verdictOf(rules));
  writeReports(report, rules, shop);
  tellBroken(report, rules, shop);
}

void CheckRules::writeReports(const ValidatorReason& report, const RuleFile& rules,
                              JobShopData& shop) const {
  if (!text_.empty()) {
    writeOutput(shop, "rule report", text_, reportText(report, verdictOf(rules)));
  }
  if (!json_.empty()) writeOutput(shop, "full report", json_, report.dumpJsonValueInfo());
  if (!jsonV2_.empty()) {
    writeOutput(shop, "flat report", jsonV2_, libvarrow::Json2Str(report.getJsonValueInfoV2()));
  }
}

void CheckRules::tellBroken(const ValidatorReason& report, const RuleFile& rules,
                            const JobShopData& shop) const {
  const auto simple = report.toSimple();
  std::set<std::string> told;
  for (const auto& [name, reason] : simple->breakRules()) {
    LIBVARROW_LOG_WARN("%s: %s", name.c_str(), reason.c_str());
    if (told.insert(name).second) libvarrow::reportRulesBroken(shop, name + ": " + reason);
  }
  for (const auto& rule : rules.rules()) {
    if (rule->isEnabled() && rule->getFailedCountValue() == 0) {
      libvarrow::reportRuleKept(shop, rule->dumpStr());
    }
  }
  if (told.empty() || !stop_) return;
  throw libvarrow::RulesBroken("rules: " + verdictOf(rules));
}

}  // namespace jobshop
