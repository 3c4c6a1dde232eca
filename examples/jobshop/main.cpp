// Plans a job shop: a host with the modules and the rules of job shops.
#include <libvarrow/host/Host.h>

#include "JobShopData.h"
#include "modules/registerModules.h"
#include "rules/registerRules.h"
#include "summarize.h"

int main(int argc, char** argv) {
  libvarrow::Host host("jobshop", "Plans a job shop.", jobshop::kModuleRegister,
                       jobshop::kRuleRegister);
  jobshop::registerModules(host.modules());
  jobshop::registerRules(host.rules());
  host.addFileSetting("instance", "ReadInstance.file", "the instance to plan");
  host.setSummary<jobshop::JobShopData>(jobshop::summarize);
  return host.run<jobshop::JobShopData>(argc, argv);
}
