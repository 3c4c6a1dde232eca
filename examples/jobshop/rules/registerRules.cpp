#include "rules/registerRules.h"

#include <libvarrow/utility/RegistersManager.h>

#include "rules/LatestFinish.h"
#include "rules/MachineLoad.h"
#include "rules/MaxInterruption.h"
#include "rules/MaxWait.h"

namespace jobshop {

void registerRules() {
  const auto classes = libvarrow::RegistersManager::createRegister(kRuleRegister);
  classes->regClass<LatestFinish>("LatestFinish");
  classes->regClass<MachineLoad>("MachineLoad");
  classes->regClass<MaxInterruption>("MaxInterruption");
  classes->regClass<MaxWait>("MaxWait");
}

}  // namespace jobshop
