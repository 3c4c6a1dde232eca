// The module that reads the instance to plan.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <string>

namespace jobshop {

/// Module, in JSON {"ReadInstance": {"file": "data/ft06.txt"}}.
class ReadInstance : public libvarrow::Module {
 public:
  /// Binds "file", required: a path, from the pipeline file's folder unless absolute. The program's
  /// --instance replaces it.
  void setBind(cppbind::Binder* binder, bool bindFields);

  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::string file_;
};

}  // namespace jobshop
