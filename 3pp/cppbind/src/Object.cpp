#include "cppbind/Object.h"

#include <boost/core/demangle.hpp>
#include <new>

namespace cppbind {

std::string typeName(const std::type_info& type) {
  const boost::core::scoped_demangled_name name(type.name());
  // The pointer is null only if memory is exhausted. Reports must not contain the mangled name
  // instead.
  if (name.get() == nullptr) throw std::bad_alloc();
  return name.get();
}

Object::~Object() = default;

std::string Object::dumpStr() const {
  return typeName(typeid(*this));
}

Json::Value Object::getBaiscInfoJson() const {
  return Json::Value();
}

}  // namespace cppbind
