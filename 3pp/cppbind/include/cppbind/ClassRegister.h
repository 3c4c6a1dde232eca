// The class register for hosts: registers classes by their type.
#pragma once

#include <boost/make_shared.hpp>
#include <string>
#include <utility>

#include "cppbind/ClassRegisterBase.h"
#include "cppbind/ObjFactory.h"

namespace cppbind {

/// ClassRegisterBase with registration by type. Hosts create one and pass it to executors and
/// loaders.
class CPPBIND_API ClassRegister : public ClassRegisterBase {
 public:
  using ClassRegisterBase::regClass;

  /// Registers `T`, a class derived from Object, under `className`. `baseProperty` becomes part of
  /// the creation record of every object created.
  ///
  ///     cppbind::ClassRegister reg;
  ///     reg.regClass<jobshop::Dispatch>("Dispatch");
  template <class T>
  void regClass(std::string className, Json::Value baseProperty = Json::Value()) {
    regClass(std::move(className), boost::make_shared<ObjFactoryT<T>>(std::move(baseProperty)));
  }
};

}  // namespace cppbind
