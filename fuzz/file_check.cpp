// Fuzzes the check of pipeline and rule files with classes of many kinds of fields: a file without
// errors loads, and the exception of loading another one is among its errors.
#include <algorithm>

#include "agreement/classes.h"
#include "harness.h"

namespace {

using cppbind::Fault;
using cppbind::Faults;

// Structure that ends the process by design is not loaded.
bool mayEndProcess(const Fault& fault) {
  for (const char* text : {"DynamicType object must have a unique key as it's type",
                           "should be a list", "should be a string", "should be a object",
                           "should be an integer", " is no named module", " is not a rule"}) {
    if (fault.message.find(text) != std::string::npos) return true;
  }
  return false;
}

template <class Load>
void requireAgreement(const Faults& faults, const Load& load) {
  const auto& first = faults.first;
  if (std::any_of(first.begin(), first.end(), &mayEndProcess) || faults.unlistedCount() > 0) return;
  try {
    load();
    fuzz::requireSame("", faults.hasErrors() ? first[0].text() : "", "loads");
  } catch (const cppbind::ParseErrorException& error) {
    fuzz::require(std::any_of(first.begin(), first.end(),
                              [&](const Fault& fault) {
                                return fault.path == error.path() &&
                                       fault.message == error.message();
                              }),
                  error.what());
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static libvarrow::ModuleLoader loader = agreement::newLoader();
  static const cppbind::ClassRegister rules = [] {
    cppbind::ClassRegister made;
    agreement::registerClasses<libvarrow::Rule>(made);
    return made;
  }();
  const std::string text = fuzz::textOf(data, size);
  fuzz::passes([&] {
    Json::Value json = libvarrow::Str2Json(text);
    // The check alone accepts the key.
    if (json.isObject() && json.get("$schema", 0).isString()) json.removeMember("$schema");
    requireAgreement(libvarrow::checkPipelineText(text, loader.classRegister()),
                     [&] { agreement::loadPipeline(json); });
    requireAgreement(libvarrow::checkRuleText(text, rules), [&] {
      for (const libvarrow::Rule* rule : libvarrow::RuleLoader::loadRules(json, &rules))
        delete rule;
    });
  });
  return 0;
}
