#include "modules/registerModules.h"

#include "modules/CheckRules.h"
#include "modules/CheckSchedule.h"
#include "modules/Dispatch.h"
#include "modules/Improve.h"
#include "modules/ReadInstance.h"
#include "modules/SetCalendars.h"
#include "modules/WriteSchedule.h"

namespace jobshop {

void registerModules(cppbind::ClassRegister& classes) {
  classes.regClass<ReadInstance>("ReadInstance");
  classes.regClass<SetCalendars>("SetCalendars");
  classes.regClass<Dispatch>("Dispatch");
  classes.regClass<Improve>("Improve");
  classes.regClass<CheckSchedule>("CheckSchedule");
  classes.regClass<CheckRules>("CheckRules");
  classes.regClass<WriteSchedule>("WriteSchedule");
}

}  // namespace jobshop
