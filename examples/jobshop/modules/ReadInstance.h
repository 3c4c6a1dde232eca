// The module that reads the instance to plan.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/InputFile.h>
#include <libvarrow/module/Module.h>

namespace jobshop {

/// Module, in JSON {"ReadInstance": {"file": "data/ft06.txt"}}.
class ReadInstance : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

  void processImp(libvarrow::ModuleData* data) override;

 private:
  libvarrow::InputFile file_;
};

}  // namespace jobshop
