#include "cppbind/imp/json_encode_binder.h"

namespace cppbind {

Json::Value JsonEncodeBinder::jsonOf(const Object& object) const {
  if (!writesObjects_) throw ParseErrorException("an object cannot be a default value");
  return object.getJsonValue4Bind();
}

}  // namespace cppbind
