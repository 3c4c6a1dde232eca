// Objects to JSON.
#pragma once

#include <json/value.h>

#include <boost/shared_ptr.hpp>
#include <utility>

#include "cppbind/BinderImpBase.h"
#include "cppbind/Export.h"

namespace cppbind {

/// Writes objects as JSON. JsonDecodeBinder reads what it writes, but for null object pointers,
/// written as null, durations that are negative or of 100 hours and more, and fractions of a
/// second.
class CPPBIND_API JsonEncodeBinder : public BinderImpBase {
 public:
  JsonEncodeBinder() = default;
  /// Writes text as the binder does that `converters` come from (null: as a new binder does).
  explicit JsonEncodeBinder(boost::shared_ptr<const ConverterTable> converters)
      : BinderImpBase(std::move(converters)) {}

  /// The fields that `object` declares, as a JSON object.
  template <class T>
  Json::Value encode(const T& object);
};

}  // namespace cppbind

#include "cppbind/imp/binder.h"
