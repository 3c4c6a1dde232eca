// The one description of a class's fields that serves for reading and for writing.
#pragma once

#include <json/value.h>

#include <array>
#include <boost/current_function.hpp>
#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cppbind/Assert.h"
#include "cppbind/Export.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/imp/bind_traits.h"
#include "cppbind/imp/json_decode_binder.h"
#include "cppbind/imp/json_encode_binder.h"

namespace cppbind {

template <class T, class = void>
struct FieldCodec;

template <class T>
void readDynamicList(JsonDecodeBinder& decoder, const Json::Value* json,
                     const ClassRegisterBase* reg, std::vector<boost::shared_ptr<T>>& list);

/// What setBind receives: one JSON object being read into, or written from, one object.
///
///     void Dispatch::setBind(cppbind::Binder* binder, bool bindFields) {  // public
///       if (!bindFields) return;               // true whenever the library calls
///       binder->bind("rule", rule_);           // required: missing or null throws "not found"
///       binder->bind("seed", seed_, 1);        // optional
///       binder->bind("release", release_);     // boost::posix_time::ptime, as text
///       binder->bind("modules", modules_);     // vector of shared_ptr to a registered base class
///     }
///
/// A field is one of: bool, a number, std::string; a type with a text converter; a class with a
/// setBind of its own; a class that renders itself; boost::shared_ptr to a class derived from
/// Object, {"ClassName": {fields}} in JSON; std::vector of any of these; std::set. Values must have
/// the JSON type that the field needs: 1.5 or true is no int (2.0 is, and 2 is a double). A list of
/// plain values is cleared before it is read, one of objects by name is added to; a null object
/// pointer is written as null. See FieldCodec to add a kind: any other type compiles, but throws
/// "BUG,  please register converter for TYPE" when its key is there, unless the binder was given a
/// converter; so do enumerations, std::optional and std::map.
///
/// A class whose base has fields calls `Base::setBind(binder, bindFields)` first: the compiler does
/// not notice when that is forgotten, and the base's fields are gone. Nor does it notice a setBind
/// under quite another name, or one of a class that derives from one with a record (Data4Bind): the
/// record is not read then. A setBind that cannot be called, and one in other case, do not compile.
/// A struct that is only a field needs no base class.
///
/// A Binder lives as long as one call of setBind and belongs to one thread.
class CPPBIND_API Binder {
 public:
  /// For hosts that call a setBind themselves: `imp` reads `json` or writes into it, whichever it
  /// does. Both must outlive the binder.
  Binder(BinderImpBase* imp, Json::Value& json);
  /// Reads `json` only. Both must outlive the binder.
  Binder(JsonDecodeBinder& decoder, const Json::Value& json);
  /// Writes into `json` only. Both must outlive the binder.
  Binder(JsonEncodeBinder& encoder, Json::Value& json);
  Binder(const Binder&) = delete;
  Binder& operator=(const Binder&) = delete;

  /// A required field: missing or null throws "not found", for a list of objects by name "should be
  /// a object array".
  template <class T>
  void bind(std::string_view key, T& field);

  /// A field that takes `defaultValue` when the key is missing or null.
  template <class T>
  void bind(std::string_view key, T& field, const detail::Identity<T>& defaultValue);

  /// The whole value in place of fields: for a class that is a list, say, in JSON. A missing value
  /// throws "not found".
  template <class T>
  void bind(T& whole);

  /// A default is a value, not an address, which would pass as true.
  void bind(std::string_view key, bool& field, const void* defaultValue) = delete;

  /// Objects of registered classes, appended to `list`. `defaultJson` (null: none) stands in for a
  /// missing list; `reg` (null: the binder's own) creates the objects.
  template <class T>
  void bind(std::string_view key, std::vector<boost::shared_ptr<T>>& list,
            const Json::Value* defaultJson, const ClassRegisterBase* reg = nullptr);

  /// True when fields are read from JSON, false when they are written.
  bool isReading() const { return decoder_ != nullptr; }
  /// The reading or writing binder behind this one; not null, not owned.
  BinderImpBase* implementation() const { return imp_; }
  /// The keys written so far, in the order of the bind calls.
  const std::vector<std::string>& keys() const { return keys_; }

  /// Throws "unknown json key:[KEY]" for the first key, in the JSON's order, that no bind call
  /// claimed, unless the decode binder accepts such keys.
  void checkUnknownKeys() const;

 private:
  /// The member under `key`, claimed as bound; null when it is missing or null.
  const Json::Value* claim(std::string_view key);
  const Json::Value& claimWhole();
  void addClaim(const Json::Value* member);
  bool isClaimed(const Json::Value* member) const;
  Json::Value& memberToWrite(std::string_view key);
  [[noreturn]] static void throwNotFound(std::string_view key);
  void requireEncoder() const {
    if (encoder_ == nullptr) {
      assertionFailed("\"bug\" == NULL", __FILE__, __LINE__, BOOST_CURRENT_FUNCTION);
    }
  }

  template <class T>
  void write(std::string_view key, const T& field);

  BinderImpBase* imp_;
  JsonDecodeBinder* decoder_;  // set when imp_ reads
  JsonEncodeBinder* encoder_;  // set when imp_ writes
  const Json::Value* source_;  // what is read
  Json::Value* target_;        // what is written into
  bool hasMembers_ = true;     // what is read is an object, or null
  bool isWholeClaimed_ = false;
  // The bound keys that the JSON has, each by its member: the source does not change while it is
  // read, and an address is cheaper to keep and to compare than a text.
  std::array<const Json::Value*, 16> firstClaims_;
  std::size_t claimCount_ = 0;
  std::vector<const Json::Value*> furtherClaims_;
  std::vector<std::string> keys_;
};

}  // namespace cppbind

#include "cppbind/imp/field_codec.h"

namespace cppbind {

template <class T>
void Binder::bind(std::string_view key, T& field) {
  if (decoder_ == nullptr) return write(key, field);
  const Json::Value* member = claim(key);
  if constexpr (isDynamicList<T>) {
    withKey(key, [&] { readDynamicList(*decoder_, member, nullptr, field); });
  } else {
    if (member == nullptr) throwNotFound(key);
    withKey(key, [&] { FieldCodec<T>::read(*decoder_, *member, field); });
  }
}

template <class T>
void Binder::bind(std::string_view key, T& field, const detail::Identity<T>& defaultValue) {
  if (decoder_ == nullptr) return write(key, field);
  if (const Json::Value* member = claim(key)) {
    withKey(key, [&] { FieldCodec<T>::read(*decoder_, *member, field); });
  } else {
    field = defaultValue;
  }
}

template <class T>
void Binder::bind(std::string_view key, std::vector<boost::shared_ptr<T>>& list,
                  const Json::Value* defaultJson, const ClassRegisterBase* reg) {
  if (decoder_ == nullptr) return write(key, list);
  const Json::Value* member = claim(key);
  withKey(key,
          [&] { readDynamicList(*decoder_, member != nullptr ? member : defaultJson, reg, list); });
}

template <class T>
void Binder::bind(T& whole) {
  if (decoder_ != nullptr) {
    FieldCodec<T>::read(*decoder_, claimWhole(), whole);
  } else {
    requireEncoder();
    FieldCodec<T>::write(*encoder_, whole, *target_);
  }
}

template <class T>
void Binder::write(std::string_view key, const T& field) {
  requireEncoder();
  FieldCodec<T>::write(*encoder_, field, memberToWrite(key));
}

template <class T>
void JsonDecodeBinder::decode(const Json::Value& json, T& object) {
  static_assert(!bindsThroughRecord<T>, "read T::Data4Bind and construct T from it");
  requireReachableFields<T>();
  Binder binder(*this, json);
  if constexpr (hasSetBind<T>) object.setBind(&binder, true);
  binder.checkUnknownKeys();
}

template <class T>
Json::Value JsonEncodeBinder::encode(const T& object) {
  requireReachableFields<T>();
  if constexpr (bindsThroughRecord<T>) {
    return encode(object.getData4Bind());
  } else {
    Json::Value json(Json::objectValue);
    Binder binder(*this, json);
    // The description of fields is one for both directions. One that tidies its object while it is
    // written (sorts, cuts digits) does so to whoever gave it as const.
    if constexpr (hasSetBind<T>) const_cast<T&>(object).setBind(&binder, true);
    return json;
  }
}

}  // namespace cppbind
