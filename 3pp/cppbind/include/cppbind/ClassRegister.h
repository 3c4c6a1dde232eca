// The registry that hosts use: classes are registered by their type.
#pragma once

#include <boost/make_shared.hpp>
#include <string>
#include <utility>

#include "cppbind/ClassRegisterBase.h"
#include "cppbind/ObjFactory.h"

namespace cppbind {

/// ClassRegisterBase with registration by type: what hosts make and hand to executors and loaders.
class CPPBIND_API ClassRegister : public ClassRegisterBase {
 public:
  using ClassRegisterBase::regClass;

  /// Registers `T`, a class derived from Object, under `className`. `baseProperty` stands in the
  /// creation record of every object made.
  ///
  ///     cppbind::ClassRegister reg;
  ///     reg.regClass<jobshop::Dispatch>("Dispatch");
  template <class T>
  void regClass(std::string className, Json::Value baseProperty = Json::Value()) {
    regClass(std::move(className), boost::make_shared<ObjFactoryT<T>>(std::move(baseProperty)));
  }
};

}  // namespace cppbind
