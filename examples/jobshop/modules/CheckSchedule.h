// The module that stops a pipeline whose schedule is not feasible.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

namespace jobshop {

/// Module that logs every violation and throws std::runtime_error with the first.
///
/// In JSON: {"CheckSchedule": {}}.
class CheckSchedule : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);
  void processImp(libvarrow::ModuleData* data) override;
};

}  // namespace jobshop
