#include "rules/registerRules.h"

#include "rules/LatestFinish.h"
#include "rules/MachineLoad.h"
#include "rules/MaxInterruption.h"
#include "rules/MaxWait.h"

namespace jobshop {

void registerRules(cppbind::ClassRegister& classes) {
  classes.regClass<LatestFinish>("LatestFinish");
  classes.regClass<MachineLoad>("MachineLoad");
  classes.regClass<MaxInterruption>("MaxInterruption");
  classes.regClass<MaxWait>("MaxWait");
}

}  // namespace jobshop
