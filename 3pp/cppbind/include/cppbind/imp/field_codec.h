// The codecs: read one value of each kind of field from JSON and write it.
#pragma once

#include <json/value.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "cppbind/Describer.h"
#include "cppbind/EnumNames.h"
#include "cppbind/Export.h"
#include "cppbind/Object.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/imp/bind_traits.h"
#include "cppbind/imp/binder.h"
#include "cppbind/imp/gatherer.h"

namespace cppbind {

namespace detail {

// Each throws when `json` has another type than the field, in the wording of the JSON library.
CPPBIND_API void readScalar(const Json::Value& json, bool& field);
CPPBIND_API void readScalar(const Json::Value& json, signed char& field);
CPPBIND_API void readScalar(const Json::Value& json, unsigned char& field);
CPPBIND_API void readScalar(const Json::Value& json, short& field);
CPPBIND_API void readScalar(const Json::Value& json, unsigned short& field);
CPPBIND_API void readScalar(const Json::Value& json, int& field);
CPPBIND_API void readScalar(const Json::Value& json, unsigned int& field);
CPPBIND_API void readScalar(const Json::Value& json, long& field);
CPPBIND_API void readScalar(const Json::Value& json, unsigned long& field);
CPPBIND_API void readScalar(const Json::Value& json, long long& field);
CPPBIND_API void readScalar(const Json::Value& json, unsigned long long& field);
CPPBIND_API void readScalar(const Json::Value& json, float& field);
CPPBIND_API void readScalar(const Json::Value& json, double& field);
CPPBIND_API void readScalar(const Json::Value& json, std::string& field);

template <class T, class = void>
struct IsScalar : std::false_type {};
template <class T>
struct IsScalar<
    T, std::void_t<decltype(readScalar(std::declval<const Json::Value&>(), std::declval<T&>()))>>
    : std::true_type {};

/// Throws ParseErrorException with the text `complaint` when `json` is not an array.
CPPBIND_API void requireArray(const Json::Value& json, const char* complaint);
CPPBIND_API void requireObject(const Json::Value& json);
[[noreturn]] CPPBIND_API void throwNotFound();
CPPBIND_API void describeScalar(ValueDescription& value, const std::type_info& type);
CPPBIND_API void describeNames(ValueDescription& value, const EnumTable& names,
                               const ProbedValues& probed);
/// Returns the value of the name in `json`. Throws ParseErrorException when it has none.
CPPBIND_API std::int64_t valueNamed(const Json::Value& json, const EnumTable& names);
/// Returns the name of `value`. Throws ParseErrorException when it has none.
CPPBIND_API std::string_view nameOf(std::int64_t value, const EnumTable& names);
/// Calls `read` with each member of the object `json`. Its exceptions get the key as path.
template <class Read>
void forEachMember(const JsonDecodeBinder& decoder, const Json::Value& json, const Read& read) {
  requireObject(json);
  Gatherer gatherer(decoder);
  for (auto member = json.begin(); member != json.end(); ++member) {
    const std::string key = member.name();
    gatherer.atKey(key, [&] { read(key, *member); });
  }
  gatherer.finish();
}

/// Throws a null pointer to the class that `factory` creates.
CPPBIND_API void throwNullObject(const ObjFactory& factory);
/// Returns true when `factory` creates objects that are a `T`.
template <class T>
bool creates(const ObjFactory& factory) {
  try {
    throwNullObject(factory);
  } catch (const T*) {
    return true;
  } catch (...) {
  }
  return false;
}
/// Returns the text in `json`, valid as long as `json` exists. Throws ParseErrorException when
/// `json` is not a string.
CPPBIND_API std::string_view textIn(const Json::Value& json);

/// Returns true for a null pointer: it has no text and is written as null.
template <class T>
bool isNullPointer(const T&) {
  return false;
}
template <class T>
bool isNullPointer(const boost::shared_ptr<T>& pointer) {
  return pointer == nullptr;
}

}  // namespace detail

namespace detail {

template <class T>
bool readsNull(const BinderImpBase& binder) {
  if constexpr (Compiles<T, ReadsNullCall>::value) return FieldCodec<T>::readsNull(binder);
  return false;
}

/// Reads an element of a list or a map; null counts as missing.
template <class T>
void readElement(JsonDecodeBinder& decoder, const Json::Value& json, T& element) {
  if (json.isNull() && !readsNull<T>(decoder)) throwNotFound();
  FieldCodec<T>::read(decoder, json, element);
}

// A value that a container can create and a codec can read. Others need a converter for the whole.
template <class T>
struct IsReadable
    : std::bool_constant<std::is_default_constructible_v<T> && !IsForeignObjectPointer<T>::value> {
};
template <class T>
struct IsReadable<std::vector<T>> : IsReadable<T> {};
template <class T>
struct IsReadable<std::set<T>> : IsReadable<T> {};
template <class T>
struct IsReadable<std::optional<T>> : IsReadable<T> {};
template <class T, class Less, class Allocator>
struct IsReadable<std::map<std::string, T, Less, Allocator>> : IsReadable<T> {};

// Codecs of the kinds of fields that a converter of the binder for the very type overrides.
template <class T, class = void>
struct DefaultCodec {
  static constexpr bool exists = false;
};

template <class T>
struct DefaultCodec<T, std::enable_if_t<HasEnumNames<T>::value>> {
  static constexpr bool exists = true;
  static constexpr bool readsNull = false;

  static void read(JsonDecodeBinder&, const Json::Value& json, T& field) {
    field = static_cast<T>(valueNamed(json, enumTable<T>()));
  }
  static void write(JsonEncodeBinder&, const T& field, Json::Value& json) {
    const std::string_view name = nameOf(static_cast<std::int64_t>(field), enumTable<T>());
    json = Json::Value(name.data(), name.data() + name.size());
  }
  static void describe(ValueDescription& value, Describer&) {
    describeNames(value, enumTable<T>(), probedValues<T>());
  }
};

template <class T>
struct DefaultCodec<std::optional<T>, std::enable_if_t<IsReadable<T>::value>> {
  static constexpr bool exists = true;
  static constexpr bool readsNull = true;

  static void read(JsonDecodeBinder& decoder, const Json::Value& json, std::optional<T>& field) {
    field.reset();
    if (!json.isNull()) FieldCodec<T>::read(decoder, json, field.emplace());
  }
  static void write(JsonEncodeBinder& encoder, const std::optional<T>& field, Json::Value& json) {
    json = Json::Value();
    if (field) FieldCodec<T>::write(encoder, *field, json);
  }
  static void describe(ValueDescription& value, Describer& describer) {
    describer.describe<T>(value);
    value.isNullable = true;
  }
};

template <class T, class Less, class Allocator>
struct DefaultCodec<std::map<std::string, T, Less, Allocator>,
                    std::enable_if_t<IsReadable<T>::value>> {
  using Map = std::map<std::string, T, Less, Allocator>;
  static constexpr bool exists = true;
  static constexpr bool readsNull = false;

  static void read(JsonDecodeBinder& decoder, const Json::Value& json, Map& field) {
    field.clear();
    forEachMember(decoder, json, [&](const std::string& key, const Json::Value& member) {
      readElement(decoder, member, field[key]);
    });
  }
  static void write(JsonEncodeBinder& encoder, const Map& field, Json::Value& json) {
    json = Json::Value(Json::objectValue);
    for (const auto& [key, value] : field) FieldCodec<T>::write(encoder, value, json[key]);
  }
  static void describe(ValueDescription& value, Describer& describer) {
    describer.describeElements<T>(value, ValueKind::Map);
  }
};

}  // namespace detail

/// Codec that reads and writes one value of type `T`. The primary template, for all types without a
/// specialisation, uses a text converter. A specialisation adds a kind of field:
///
///     template <>
///     struct cppbind::FieldCodec<Color> {
///       static void read(JsonDecodeBinder&, const Json::Value& json, Color& field) {
///         const auto color = colorNamed(json.asString());
///         if (!color) throw ParseErrorException("no color");
///         field = *color;
///       }
///       static void write(JsonEncodeBinder&, const Color& field, Json::Value& json) {
///         json = nameOf(field);
///       }
///     };
///
/// Put it in a header that every binding of the type includes. It uses the codecs of the values
/// that `T` contains. Under a key of setBind, read is not called for a missing or null value; in a
/// list, a null element throws before. Two more functions are optional:
///
///       static void describe(ValueDescription& value, Describer&) {  // otherwise: any value
///         value.kind = ValueKind::Enumeration;                       // see Describer
///         value.names = namesOfColors();
///       }
///       // True: read() is called for null, too, and for a missing value of a required field.
///       static bool readsNull(const BinderImpBase&);
template <class T, class>
struct FieldCodec {
  static_assert(!detail::IsForeignObjectPointer<T>::value,
                "objects of registered classes are held by boost::shared_ptr");

  /// Sets `field` to the value of `json`. A std::exception that it throws reaches the caller as a
  /// ParseErrorException with the path of the field.
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, T& field) {
    if constexpr (Default::exists) {
      if (decoder.findConverter(typeid(T)) == nullptr) return Default::read(decoder, json, field);
    }
    const StringConverter& converter = decoder.converterFor(typeid(T));
    const std::string_view text = detail::textIn(json);
    if (const void* typed = converter.typed(typeid(T))) {
      field = static_cast<const TypedStringConverter<T>*>(typed)->valueOf(text);
    } else {
      field = boost::any_cast<T>(converter.fromString(std::string(text)));
    }
  }
  /// Sets `json` to the JSON form of `field`.
  static void write(JsonEncodeBinder& encoder, const T& field, Json::Value& json) {
    if constexpr (Default::exists) {
      if (encoder.findConverter(typeid(T)) == nullptr) return Default::write(encoder, field, json);
    }
    const StringConverter& converter = encoder.converterFor(typeid(T));
    if (detail::isNullPointer(field)) {
      json = Json::Value();
    } else if (const void* typed = converter.typed(typeid(T))) {
      json = static_cast<const TypedStringConverter<T>*>(typed)->textOf(field);
    } else {
      json = converter.toString(field);
    }
  }
  /// Describes values of the type.
  static void describe(ValueDescription& value, Describer& describer) {
    if (describer.describeText(value, typeid(T))) return;
    if constexpr (Default::exists) Default::describe(value, describer);
  }
  /// Returns true for a std::optional, unless `binder` has a converter for it.
  static bool readsNull([[maybe_unused]] const BinderImpBase& binder) {
    if constexpr (Default::exists) {
      return Default::readsNull && binder.findConverter(typeid(T)) == nullptr;
    }
    return false;
  }

 private:
  using Default = detail::DefaultCodec<T>;
};

/// Codec of numbers, booleans and strings.
template <class T>
struct FieldCodec<T, std::enable_if_t<detail::IsScalar<T>::value>> {
  static void read(JsonDecodeBinder&, const Json::Value& json, T& field) {
    detail::readScalar(json, field);
  }
  static void write(JsonEncodeBinder&, const T& field, Json::Value& json) {
    if constexpr (std::is_same_v<T, bool> || !std::is_integral_v<T>) {
      json = Json::Value(field);
    } else if constexpr (std::is_signed_v<T>) {
      json = Json::Value(static_cast<Json::Int64>(field));
    } else {
      json = Json::Value(static_cast<Json::UInt64>(field));
    }
  }
  static void describe(ValueDescription& value, Describer&) {
    detail::describeScalar(value, typeid(T));
  }
};

/// Codec of objects with a setBind.
template <class T>
struct FieldCodec<T, std::enable_if_t<hasSetBind<T>>> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, T& field) {
    decoder.decode(json, field);
  }
  static void write(JsonEncodeBinder& encoder, const T& field, Json::Value& json) {
    json = encoder.encode(field);
  }
  static void describe(ValueDescription& value, Describer& describer) {
    describer.describeRecord(value, detail::recordType<T>);
  }
};

/// Codec of objects that render themselves.
template <class T>
struct FieldCodec<T, std::enable_if_t<rendersItself<T>>> {
  static void read(JsonDecodeBinder&, const Json::Value& json, T& field) {
    field.fromJsonValue4Bind(json);
  }
  static void write(JsonEncodeBinder&, const T& field, Json::Value& json) {
    json = field.toJsonValue4Bind();
  }
};

/// Codec of objects of registered classes. A null pointer is written as null.
template <class T>
struct FieldCodec<boost::shared_ptr<T>, std::enable_if_t<std::is_base_of_v<Object, T>>> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json,
                   boost::shared_ptr<T>& field) {
    decoder.bindDynamicType(json, field);
  }
  static void write(JsonEncodeBinder& encoder, const boost::shared_ptr<T>& field,
                    Json::Value& json) {
    json = field ? encoder.jsonOf(*field) : Json::Value();
  }
  static void describe(ValueDescription& value, Describer& describer) {
    describer.describeObject(value, &detail::creates<T>);
  }
};

/// Appends the objects that the array `json` describes. Throws when `json` is null (missing) or not
/// an array. When an element cannot be created, the objects before it stay in the list.
template <class T>
void readDynamicList(JsonDecodeBinder& decoder, const Json::Value* json,
                     const ClassRegisterBase* reg, std::vector<boost::shared_ptr<T>>& list) {
  const Json::Value& array = json != nullptr ? *json : Json::Value::nullSingleton();
  detail::requireArray(array, "should be a object array");
  detail::Gatherer gatherer(decoder);
  std::size_t index = 0;
  for (const Json::Value& element : array) {
    gatherer.atIndex(index++, [&] {
      detail::requireObject(element);
      boost::shared_ptr<T> object;
      decoder.bindDynamicType(element, object, reg);
      list.push_back(std::move(object));
    });
  }
  gatherer.finish();
}

/// Codec of lists. Reading clears a list of plain values, but appends to a list of objects by name.
template <class T>
struct FieldCodec<std::vector<T>> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, std::vector<T>& list) {
    if constexpr (isDynamicList<std::vector<T>>) {
      readDynamicList(decoder, &json, nullptr, list);
    } else {
      readPlainList(decoder, json, list);
    }
  }
  static void write(JsonEncodeBinder& encoder, const std::vector<T>& list, Json::Value& json) {
    json = Json::Value(Json::arrayValue);
    for (const T& element : list) {
      FieldCodec<T>::write(encoder, element, json.append(Json::Value()));
    }
  }
  static void describe(ValueDescription& value, Describer& describer) {
    describer.describeElements<T>(value, ValueKind::List);
  }

 private:
  static void readPlainList(JsonDecodeBinder& decoder, const Json::Value& json,
                            std::vector<T>& list) {
    detail::requireArray(json, "should be a list");
    list.clear();
    list.reserve(json.size());
    detail::Gatherer gatherer(decoder);
    std::size_t index = 0;
    for (const Json::Value& element : json) {
      gatherer.atIndex(index++, [&] { readElement(decoder, element, list); });
    }
    gatherer.finish();
  }

  // Reads in place, since moving a large element is expensive. Removes an element that cannot be
  // read.
  static void readElement(JsonDecodeBinder& decoder, const Json::Value& json,
                          std::vector<T>& list) {
    if constexpr (std::is_same_v<T, bool>) {
      bool value = false;
      detail::readElement(decoder, json, value);
      list.push_back(value);
    } else {
      T& value = list.emplace_back();
      try {
        detail::readElement(decoder, json, value);
      } catch (...) {
        list.pop_back();
        throw;
      }
    }
  }
};

/// Codec of sets: lists in JSON, in which a value may occur more than once.
template <class T>
struct FieldCodec<std::set<T>> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, std::set<T>& field) {
    std::vector<T> list;
    FieldCodec<std::vector<T>>::read(decoder, json, list);
    field = std::set<T>(list.begin(), list.end());
  }
  static void write(JsonEncodeBinder& encoder, const std::set<T>& field, Json::Value& json) {
    FieldCodec<std::vector<T>>::write(encoder, std::vector<T>(field.begin(), field.end()), json);
  }
  static void describe(ValueDescription& value, Describer& describer) {
    describer.describeElements<T>(value, ValueKind::Set);
  }
};

template <class T>
void Describer::describe(ValueDescription& value) {
  if constexpr (detail::Compiles<T, detail::DescribeCall>::value) {
    FieldCodec<T>::describe(value, *this);
  }
}

template <class T>
Description describe(const ClassRegisterBase* reg,
                     boost::shared_ptr<const ConverterTable> converters) {
  return detail::describeType(detail::fieldType<T>(), reg, std::move(converters));
}

}  // namespace cppbind
