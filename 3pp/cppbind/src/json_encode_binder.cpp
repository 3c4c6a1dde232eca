#include "cppbind/imp/json_encode_binder.h"

namespace cppbind {

std::string JsonEncodeBinder::writeText(const boost::any& value, std::type_index type) const {
  return converterFor(type).toString(value);
}

}  // namespace cppbind
