// The table of functions for the type of a field, for code that is not a template.
#pragma once

#include <json/value.h>

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
  // A function, because the address of an imported type is not a constant on every platform.
  const std::type_info& (*type)();
  const FieldType* functions;
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
  // Global operators: a class may have deleted its own ones.
  CPPBIND_COLD static void* create() { return ::new T(); }
  CPPBIND_COLD static void destroy(void* value) { ::delete static_cast<T*>(value); }

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
inline constexpr FieldType fieldType{isDynamicList<T>,
                                     FieldFunctions<T>::nullReader(),
                                     &FieldFunctions<T>::read,
                                     &FieldFunctions<T>::write,
                                     FieldFunctions<T>::creator(),
                                     FieldFunctions<T>::destroyer(),
                                     FieldFunctions<T>::describer()};

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
