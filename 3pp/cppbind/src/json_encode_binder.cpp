#include "cppbind/imp/json_encode_binder.h"

namespace cppbind {

Json::Value JsonEncodeBinder::jsonOf(const Object& object) const {
  if (!writesObjects_) throw ParseErrorException("an object is not a default value in JSON");
  return object.getJsonValue4Bind();
}

}  // namespace cppbind
