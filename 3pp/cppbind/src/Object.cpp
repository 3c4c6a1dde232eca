#include "cppbind/Object.h"

#include "readable_name.h"

namespace cppbind {

std::string typeName(const std::type_info& type) {
  return readableName(type.name());
}

Object::~Object() = default;

std::string Object::dumpStr() const {
  return typeName(typeid(*this));
}

Json::Value Object::getBaiscInfoJson() const {
  return Json::Value();
}

}  // namespace cppbind
