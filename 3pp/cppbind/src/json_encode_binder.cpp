#include "cppbind/imp/json_encode_binder.h"

#include "object_notes.h"

namespace cppbind {

Json::Value JsonEncodeBinder::jsonOf(const Object& object) const {
  if (!writesObjects_) throw detail::ObjectAsDefault();
  return object.getJsonValue4Bind();
}

}  // namespace cppbind
