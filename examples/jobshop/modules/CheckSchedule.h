// The module that stops a pipeline whose schedule is not feasible, and explains one that is.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

namespace jobshop {

/// Module that logs every violation and throws std::runtime_error with the first. Of a feasible
/// schedule it records the reasons for which operations do not start earlier.
///
/// In JSON: {"CheckSchedule": {}}.
class CheckSchedule : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);
  void processImp(libvarrow::ModuleData* data) override;
};

}  // namespace jobshop
