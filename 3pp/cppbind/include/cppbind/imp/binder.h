// The binder: one description of a class's fields serves for reading and for writing.
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
#include "cppbind/imp/field_type.h"
#include "cppbind/imp/json_decode_binder.h"
#include "cppbind/imp/json_encode_binder.h"

namespace cppbind {

class FieldDescription;

namespace detail {
class Collector;
class FieldHandle;
class ObjectNotes;
struct Itself;
}  // namespace detail

template <class T, class Path = detail::Itself>
class Field;

template <class T>
void readDynamicList(JsonDecodeBinder& decoder, const Json::Value* json,
                     const ClassRegisterBase* reg, std::vector<boost::shared_ptr<T>>& list);

/// Argument of setBind: one JSON object that one C++ object is read from or written to.
///
///     void Dispatch::setBind(cppbind::Binder* binder, bool bindFields) {  // public
///       if (!bindFields) return;               // true whenever the library calls
///       binder->bind("rule", rule_);           // required: missing or null throws "not found"
///       binder->bind("seed", seed_, 1);        // optional
///       binder->bind("release", release_);     // boost::posix_time::ptime, as text
///       binder->bind("modules", modules_);     // vector of shared_ptr to a registered base class
///     }
///
/// A field is one of: bool, a number, std::string; a type with a text converter; an enumeration
/// with names (EnumNames.h); a class with a setBind; a class that renders itself; boost::shared_ptr
/// to a class derived from Object, {"ClassName": {fields}} in JSON; std::vector of any of these;
/// std::set; std::map with std::string keys, an object in JSON; std::optional, which is empty when
/// its key is missing or null, and is then written as null. A value must have the JSON type of its
/// field: 1.5 and true are not valid for an int (2.0 is, and 2 is valid for a double). Reading
/// clears a list of plain values, but appends to a list of objects by name. A null object pointer
/// is written as null.
///
/// Specialise FieldCodec to add a kind of field. Any other type, such as an enumeration without
/// names, compiles, but throws "BUG,  please register converter for TYPE" when its key is present,
/// unless the binder has a converter for it.
///
/// A class whose base has fields must call `Base::setBind(binder, bindFields)` first. The compiler
/// does not detect a missing call, which loses the base's fields; nor a setBind with a completely
/// different name; nor a setBind in a class derived from one with a record (Data4Bind), which is
/// then not read. A setBind that cannot be called, or whose name differs in case only, does not
/// compile. A struct that is only a field needs no base class.
///
/// A Binder exists for one call of setBind. Not thread-safe.
class CPPBIND_API Binder {
 public:
  /// Creates a binder for a host that calls setBind itself: reads `json` or writes to it, as `imp`
  /// does. Both must outlive the binder.
  Binder(BinderImpBase* imp, Json::Value& json);
  /// Creates a binder that only reads `json`. Both must outlive the binder.
  Binder(JsonDecodeBinder& decoder, const Json::Value& json);
  /// Creates a binder that only writes to `json`. Both must outlive the binder.
  Binder(JsonEncodeBinder& encoder, Json::Value& json);
  Binder(const Binder&) = delete;
  Binder& operator=(const Binder&) = delete;

  /// Binds a required field. Throws "not found" when it is missing or null, for a list of objects
  /// by name "should be a object array".
  template <class T>
  void bind(std::string_view key, T& field);

  /// Binds an optional field: `defaultValue` replaces a missing or null value.
  template <class T>
  void bind(std::string_view key, T& field, const detail::Identity<T>& defaultValue);

  /// Binds the whole JSON value instead of its members, for a class that is a list in JSON, for
  /// example. Throws "not found" when the value is missing.
  template <class T>
  void bind(T& whole);

  /// Rejects an address as a default value: it would convert to true.
  void bind(std::string_view key, bool& field, const void* defaultValue) = delete;

  /// Binds a list of objects of registered classes; reading appends to `list`. `defaultJson` (null:
  /// none) replaces a missing list; `reg` (null: the binder's own register) creates the objects.
  template <class T>
  void bind(std::string_view key, std::vector<boost::shared_ptr<T>>& list,
            const Json::Value* defaultJson, const ClassRegisterBase* reg = nullptr);

  ///@{
  /// Binds a field like bind() and returns the handle to state conditions on its value and to
  /// document it:
  ///
  ///     binder->field("tries", tries_, 1).atLeast(1).about("How many schedules are tried.");
  template <class T>
  Field<T> field(std::string_view key, T& field);
  template <class T>
  Field<T> field(std::string_view key, T& field, const detail::Identity<T>& defaultValue);
  template <class T>
  Field<T> field(T& whole);
  template <class T>
  Field<std::vector<boost::shared_ptr<T>>> field(std::string_view key,
                                                 std::vector<boost::shared_ptr<T>>& list,
                                                 const Json::Value* defaultJson,
                                                 const ClassRegisterBase* reg = nullptr);
  void field(std::string_view key, bool& field, const void* defaultValue) = delete;
  ///@}

  /// Documents the class. The last text counts, so a derived class speaks after its base.
  void about(std::string_view text) {
    if (notes_ != nullptr) noteAbout(text);
  }

  /// Returns true when fields are read from JSON or described, false when they are written.
  bool isReading() const { return decoder_ != nullptr; }
  /// Returns true when the class is only described, see cppbind::describe(): no field is read, and
  /// fields without a default keep their values. A setBind that uses a field that it has just
  /// bound, such as a required pointer, or that chooses keys by a value, asks this first; the
  /// latter then binds all its keys, each with a default.
  bool isDescribing() const { return notes_ != nullptr; }
  /// Returns the underlying reading or writing binder; not null, not owned.
  BinderImpBase* implementation() const { return imp_; }
  /// Returns the keys written so far, in the order of the bind calls.
  const std::vector<std::string>& keys() const { return keys_; }

  /// Throws "unknown json key:[KEY]" for the first key, in the JSON's order, that no bind call
  /// claimed, unless the decode binder accepts such keys.
  void checkUnknownKeys();

 private:
  friend class Describer;
  friend class detail::Collector;
  friend class detail::FieldHandle;

  /// Creates a binder that describes: it reads a missing value and notes the fields.
  Binder(JsonDecodeBinder& decoder, detail::ObjectNotes& notes);

  /// Returns the member under `key` and marks it as claimed; null when it is missing or null.
  const Json::Value* claim(std::string_view key);
  /// Returns the whole value; null when it is missing.
  const Json::Value* claimWhole();
  /// Handles a required field without a value: notes it, reads null or throws.
  void missing(std::string_view key, const detail::FieldType& type, void* field);
  bool readsNull(const detail::FieldType& type) const;
  void missingWhole(const detail::FieldType& type, void* whole);
  void noteDefault(std::string_view key, const detail::FieldType& type, const void* field);
  /// Returns false unless the binder describes.
  bool noteList(std::string_view key, const detail::FieldType& type, const Json::Value* defaultJson,
                const ClassRegisterBase* reg);
  void noteAbout(std::string_view text);
  void addClaim(const Json::Value* member);
  bool isAmongFirstClaims(const Json::Value* member) const;
  /// Returns true when fields claimed every member. Needed before isClaimed().
  bool hasClaimedAll();
  bool isClaimed(const Json::Value* member) const;
  Json::Value& memberToWrite(std::string_view key);
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
  const Json::Value* source_;  // the JSON that is read
  Json::Value* target_;        // the JSON that is written to
  bool hasMembers_ = true;     // source_ is an object or null
  bool isWholeClaimed_ = false;
  // The bound keys that the JSON has, each as the address of its member: the source does not change
  // while it is read, and addresses are cheaper to store and compare than texts.
  std::array<const Json::Value*, 16> firstClaims_;
  std::size_t firstClaimCount_ = 0;
  // Sorted and unique once all fields are bound: a search at each claim would take quadratic time.
  std::vector<const Json::Value*> furtherClaims_;
  std::vector<std::string> keys_;
  const Json::Value* value_ = nullptr;    // of the last field; null unless it is read
  detail::ObjectNotes* notes_ = nullptr;  // set when the class is described
  FieldDescription* noted_ = nullptr;     // the last field that was noted
};

}  // namespace cppbind

#include "cppbind/Field.h"
#include "cppbind/imp/field_codec.h"

namespace cppbind {

template <class T>
void Binder::bind(std::string_view key, T& field) {
  if (decoder_ == nullptr) return write(key, field);
  const Json::Value* member = claim(key);
  if (member == nullptr) return missing(key, detail::fieldType<T>(), &field);
  withKey(key, [&] {
    if constexpr (isDynamicList<T>) {
      readDynamicList(*decoder_, member, nullptr, field);
    } else {
      FieldCodec<T>::read(*decoder_, *member, field);
    }
  });
}

template <class T>
void Binder::bind(std::string_view key, T& field, const detail::Identity<T>& defaultValue) {
  if (decoder_ == nullptr) return write(key, field);
  if (const Json::Value* member = claim(key)) {
    withKey(key, [&] { FieldCodec<T>::read(*decoder_, *member, field); });
  } else {
    field = defaultValue;
    if (notes_ != nullptr) noteDefault(key, detail::fieldType<T>(), &field);
  }
}

template <class T>
void Binder::bind(std::string_view key, std::vector<boost::shared_ptr<T>>& list,
                  const Json::Value* defaultJson, const ClassRegisterBase* reg) {
  if (decoder_ == nullptr) return write(key, list);
  const Json::Value* member = claim(key);
  if (noteList(key, detail::fieldType<std::vector<boost::shared_ptr<T>>>(), defaultJson, reg))
    return;
  withKey(key,
          [&] { readDynamicList(*decoder_, member != nullptr ? member : defaultJson, reg, list); });
}

template <class T>
void Binder::bind(T& whole) {
  if (decoder_ != nullptr) {
    const Json::Value* value = claimWhole();
    if (value == nullptr) return missingWhole(detail::fieldType<T>(), &whole);
    FieldCodec<T>::read(*decoder_, *value, whole);
  } else {
    requireEncoder();
    FieldCodec<T>::write(*encoder_, whole, *target_);
  }
}

template <class T>
Field<T> Binder::field(std::string_view key, T& field) {
  bind(key, field);
  return {*this, key, value_ != nullptr ? &field : nullptr, noted_};
}

template <class T>
Field<T> Binder::field(std::string_view key, T& field, const detail::Identity<T>& defaultValue) {
  bind(key, field, defaultValue);
  return {*this, key, value_ != nullptr ? &field : nullptr, noted_};
}

template <class T>
Field<std::vector<boost::shared_ptr<T>>> Binder::field(std::string_view key,
                                                       std::vector<boost::shared_ptr<T>>& list,
                                                       const Json::Value* defaultJson,
                                                       const ClassRegisterBase* reg) {
  bind(key, list, defaultJson, reg);
  return {*this, key, value_ != nullptr ? &list : nullptr, noted_};
}

template <class T>
Field<T> Binder::field(T& whole) {
  bind(whole);
  return {*this, std::string_view(), value_ != nullptr ? &whole : nullptr, noted_};
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
  if (collector_ != nullptr) return collect(json, typeid(T), detail::fieldBinder<T>(), &object);
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
    // setBind serves both directions, so it is not const. One that modifies its object while
    // writing (sorts, truncates digits) modifies the caller's const object.
    if constexpr (hasSetBind<T>) const_cast<T&>(object).setBind(&binder, true);
    return json;
  }
}

}  // namespace cppbind
