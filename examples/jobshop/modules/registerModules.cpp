#include "modules/registerModules.h"

#include <libvarrow/module/ChainedModule.h>
#include <libvarrow/module/CommonModuleStatDumper.h>
#include <libvarrow/utility/RegistersManager.h>

#include "modules/CheckRules.h"
#include "modules/CheckSchedule.h"
#include "modules/Dispatch.h"
#include "modules/ReadInstance.h"
#include "modules/SetCalendars.h"
#include "modules/WriteSchedule.h"

namespace jobshop {

boost::shared_ptr<cppbind::ClassRegister> registerModules() {
  auto classes = libvarrow::RegistersManager::createRegister(kModuleRegister);
  classes->regClass<libvarrow::ChainedModule>("ChainedModule");
  classes->regClass<libvarrow::CommonModuleStatDumper>("CommonModuleStatDumper");
  classes->regClass<ReadInstance>("ReadInstance");
  classes->regClass<SetCalendars>("SetCalendars");
  classes->regClass<Dispatch>("Dispatch");
  classes->regClass<CheckSchedule>("CheckSchedule");
  classes->regClass<CheckRules>("CheckRules");
  classes->regClass<WriteSchedule>("WriteSchedule");
  return classes;
}

}  // namespace jobshop
