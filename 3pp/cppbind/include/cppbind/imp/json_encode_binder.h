// Objects to JSON.
#pragma once

#include <json/value.h>

#include <boost/any.hpp>
#include <string>
#include <typeindex>

#include "cppbind/BinderImpBase.h"
#include "cppbind/Export.h"

namespace cppbind {

/// Writes objects as JSON. What it writes, JsonDecodeBinder reads.
class CPPBIND_API JsonEncodeBinder : public BinderImpBase {
 public:
  /// The fields that `object` declares, as a JSON object.
  template <class T>
  Json::Value encode(const T& object);

  /// The text of `value` by the converter for `type`.
  std::string writeText(const boost::any& value, std::type_index type) const;
};

}  // namespace cppbind

#include "cppbind/imp/binder.h"
