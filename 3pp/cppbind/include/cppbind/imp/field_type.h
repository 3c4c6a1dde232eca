// The table of functions for the type of a field, for code that is not a template.
#pragma once

#include <json/value.h>

#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "cppbind/Export.h"
#include "cppbind/imp/bind_traits.h"

namespace cppbind {

class Binder;
class BinderImpBase;
class Describer;
class JsonDecodeBinder;
class JsonEncodeBinder;
struct ValueDescription;
template <class T, class = void>
struct FieldCodec;

namespace detail {

// Functions of the type of a field. Null where the type does not have them.
struct FieldType {
  bool isObjectList;
  bool (*readsNull)(const BinderImpBase& binder);
  void (*read)(JsonDecodeBinder& decoder, const Json::Value& json, void* value);
  void (*write)(JsonEncodeBinder& encoder, const void* value, Json::Value& json);
  void* (*create)();
  void (*destroy)(void* value);
  void (*describe)(ValueDescription& value, Describer& describer);
};

// A class with a setBind.
struct RecordType {
  // Functions, because the address of an imported object is not a constant on every platform.
  const std::type_info& (*type)();
  const FieldType& (*functions)();
  void (*bind)(void* object, Binder& binder);
};

template <class T>
using DescribeCall = decltype(FieldCodec<T, void>::describe(std::declval<ValueDescription&>(),
                                                            std::declval<Describer&>()));
template <class T>
using ReadsNullCall =
    decltype(FieldCodec<T, void>::readsNull(std::declval<const BinderImpBase&>()));

template <class T>
struct FieldFunctions {
  CPPBIND_COLD static void read(JsonDecodeBinder& decoder, const Json::Value& json, void* value) {
    FieldCodec<T, void>::read(decoder, json, *static_cast<T*>(value));
  }
  CPPBIND_COLD static void write(JsonEncodeBinder& encoder, const void* value, Json::Value& json) {
    FieldCodec<T, void>::write(encoder, *static_cast<const T*>(value), json);
  }
  // A member, which has the address of the whole, since a class may have deleted its operators, or
  // have virtual functions without a virtual destructor.
  struct Held {
    T value{};
  };
  CPPBIND_COLD static void* create() { return new Held(); }
  CPPBIND_COLD static void destroy(void* value) { delete static_cast<Held*>(value); }

  static constexpr auto creator() -> void* (*)() {
    if constexpr (std::is_default_constructible_v<T>) return &create;
    return nullptr;
  }
  static constexpr auto destroyer() -> void (*)(void*) {
    if constexpr (std::is_default_constructible_v<T>) return &destroy;
    return nullptr;
  }
  static constexpr auto describer() -> void (*)(ValueDescription&, Describer&) {
    if constexpr (Compiles<T, DescribeCall>::value) return &FieldCodec<T, void>::describe;
    return nullptr;
  }
  static constexpr auto nullReader() -> bool (*)(const BinderImpBase&) {
    if constexpr (Compiles<T, ReadsNullCall>::value) return &FieldCodec<T, void>::readsNull;
    return nullptr;
  }
};

template <class T>
const FieldType& fieldTable(const T*) {
  static constexpr FieldType table{isDynamicList<T>,
                                   FieldFunctions<T>::nullReader(),
                                   &FieldFunctions<T>::read,
                                   &FieldFunctions<T>::write,
                                   FieldFunctions<T>::creator(),
                                   FieldFunctions<T>::destroyer(),
                                   FieldFunctions<T>::describer()};
  return table;
}
///@{
/// Returns a table in the library: hosts compile faster without one for each scalar type.
CPPBIND_API const FieldType& fieldTable(const bool*);
CPPBIND_API const FieldType& fieldTable(const signed char*);
CPPBIND_API const FieldType& fieldTable(const unsigned char*);
CPPBIND_API const FieldType& fieldTable(const short*);
CPPBIND_API const FieldType& fieldTable(const unsigned short*);
CPPBIND_API const FieldType& fieldTable(const int*);
CPPBIND_API const FieldType& fieldTable(const unsigned int*);
CPPBIND_API const FieldType& fieldTable(const long*);
CPPBIND_API const FieldType& fieldTable(const unsigned long*);
CPPBIND_API const FieldType& fieldTable(const long long*);
CPPBIND_API const FieldType& fieldTable(const unsigned long long*);
CPPBIND_API const FieldType& fieldTable(const float*);
CPPBIND_API const FieldType& fieldTable(const double*);
CPPBIND_API const FieldType& fieldTable(const std::string*);
///@}

// Returns the table of the type.
template <class T>
const FieldType& fieldType() {
  return fieldTable(static_cast<const T*>(nullptr));
}

template <class T>
CPPBIND_COLD void bindFields(void* object, Binder& binder) {
  static_cast<T*>(object)->setBind(&binder, true);
}

// Returns null for a class without a setBind.
template <class T>
constexpr auto fieldBinder() -> void (*)(void*, Binder&) {
  if constexpr (hasSetBind<T>) return &bindFields<T>;
  return nullptr;
}

template <class T>
const std::type_info& typeOf() {
  return typeid(T);
}

template <class T>
inline constexpr RecordType recordType{&typeOf<T>, &fieldType<T>, &bindFields<T>};

}  // namespace detail

}  // namespace cppbind
