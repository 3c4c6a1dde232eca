// The encode binder: writes objects as JSON.
#pragma once

#include <json/value.h>

#include <boost/shared_ptr.hpp>
#include <utility>

#include "cppbind/BinderImpBase.h"
#include "cppbind/Export.h"
#include "cppbind/Object.h"

namespace cppbind {

/// Binder that writes objects as JSON. JsonDecodeBinder reads its output, except null object
/// pointers (written as null), durations that are negative or at least 100 hours, and fractions of
/// a second.
class CPPBIND_API JsonEncodeBinder : public BinderImpBase {
 public:
  JsonEncodeBinder() = default;
  /// Creates a binder with the converters of another one (null: the standard ones).
  explicit JsonEncodeBinder(boost::shared_ptr<const ConverterTable> converters)
      : BinderImpBase(std::move(converters)) {}

  /// Returns the fields that `object` declares, as a JSON object.
  template <class T>
  Json::Value encode(const T& object);

  /// Returns the JSON form of an object that was created by name.
  Json::Value jsonOf(const Object& object) const;

 private:
  friend class Describer;
  // Default values may be objects that were not created by name and cannot be written.
  bool writesObjects_ = true;
};

}  // namespace cppbind

#include "cppbind/imp/binder.h"
