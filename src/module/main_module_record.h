// The record of the object layout of pipelines.
#pragma once

#include <boost/shared_ptr.hpp>

#include "cppbind/imp/binder.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// {"mainModule": {"ClassName": {...}}}
struct MainModuleRecord {
  boost::shared_ptr<Module> module;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("mainModule", module);
  }
};

}  // namespace libvarrow
