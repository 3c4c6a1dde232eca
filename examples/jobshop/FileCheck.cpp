#include "FileCheck.h"

#include <cppbind/Checker.h>
#include <libvarrow/log/log.h>
#include <libvarrow/module/pipeline_check.h>
#include <libvarrow/utility/RegistersManager.h>
#include <libvarrow/xrule/rule_check.h>

#include <boost/algorithm/string/predicate.hpp>
#include <boost/filesystem/operations.hpp>
#include <iostream>
#include <locale>
#include <set>
#include <string>

#include "OneLine.h"
#include "rules/registerRules.h"

namespace jobshop {

namespace {

namespace fs = boost::filesystem;

// Adds the rule files that `json` names. Searches the JSON, since a faulty pipeline cannot be
// loaded.
void addRuleFiles(const Json::Value& json, std::set<std::string>& files) {
  if (!json.isObject() && !json.isArray()) return;
  for (auto member = json.begin(); member != json.end(); ++member) {
    const bool isCheck = boost::iequals(member.name(), "CheckRules", std::locale::classic());
    if (isCheck && member->isObject() && (*member)["file"].isString()) {
      files.insert((*member)["file"].asString());
    }
    addRuleFiles(*member, files);
  }
}

void printLine(const std::string& text) {
  const std::string line = oneLine(text);
  LIBVARROW_LOG_WARN("%s", line.c_str());
  std::cerr << line << std::endl;
}

std::size_t report(const std::string& file, const cppbind::Faults& faults) {
  for (const cppbind::Fault& fault : faults.first) {
    printLine(file + (fault.line > 0 ? ":" : ": ") + fault.text());
  }
  if (faults.unlistedCount() > 0) {
    printLine(file + ": and " + std::to_string(faults.unlistedCount()) + " more");
  }
  return faults.errorCount;
}

}  // namespace

std::size_t reportFaults(const RunFolder& run, const cppbind::ClassRegister& modules) {
  std::size_t count = report(run.pipelineName, libvarrow::checkPipelineFile(run.pipeline, modules));
  std::set<std::string> ruleFiles;
  addRuleFiles(cppbind::Checker::ofFile(run.pipeline)->json(), ruleFiles);
  ruleFiles.erase("");  // a fault of the pipeline
  const auto* const rules = libvarrow::RegistersManager::getRegister(kRuleRegister);
  for (const std::string& file : ruleFiles) {
    const fs::path path = fs::absolute(file, run.settings.inputFolder);
    count += report(path.generic_string(), libvarrow::checkRuleFile(path, *rules));
  }
  return count;
}

}  // namespace jobshop
