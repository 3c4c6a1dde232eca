// The module that stops a pipeline whose schedule is not feasible.
#pragma once

#include <libvarrow/module/Module.h>

namespace jobshop {

/// Module that logs every violation and throws std::runtime_error with the first. Has no keys.
///
/// In JSON: {"CheckSchedule": {}}.
class CheckSchedule : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData* data) override;
};

}  // namespace jobshop
