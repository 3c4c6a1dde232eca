// The codecs: read one value of each kind of field from JSON and write it.
#pragma once

#include <json/value.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include "cppbind/Export.h"
#include "cppbind/Object.h"
#include "cppbind/ParseErrorException.h"
#include "cppbind/imp/bind_traits.h"
#include "cppbind/imp/binder.h"

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
/// list, a null element throws before.
template <class T, class>
struct FieldCodec {
  static_assert(!detail::IsForeignObjectPointer<T>::value,
                "objects of registered classes are held by boost::shared_ptr");

  /// Sets `field` to the value of `json`. A std::exception that it throws reaches the caller as a
  /// ParseErrorException with the path of the field.
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, T& field) {
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
    const StringConverter& converter = encoder.converterFor(typeid(T));
    if (detail::isNullPointer(field)) {
      json = Json::Value();
    } else if (const void* typed = converter.typed(typeid(T))) {
      json = static_cast<const TypedStringConverter<T>*>(typed)->textOf(field);
    } else {
      json = converter.toString(field);
    }
  }
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
  static void write(JsonEncodeBinder&, const boost::shared_ptr<T>& field, Json::Value& json) {
    json = field ? field->getJsonValue4Bind() : Json::Value();
  }
};

/// Appends the objects that the array `json` describes. Throws when `json` is null (missing) or not
/// an array. When an element cannot be created, the objects before it stay in the list.
template <class T>
void readDynamicList(JsonDecodeBinder& decoder, const Json::Value* json,
                     const ClassRegisterBase* reg, std::vector<boost::shared_ptr<T>>& list) {
  const Json::Value& array = json != nullptr ? *json : Json::Value::nullSingleton();
  detail::requireArray(array, "should be a object array");
  std::size_t index = 0;
  for (const Json::Value& element : array) {
    withIndex(index++, [&] {
      detail::requireObject(element);
      boost::shared_ptr<T> object;
      decoder.bindDynamicType(element, object, reg);
      list.push_back(std::move(object));
    });
  }
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

 private:
  static void readPlainList(JsonDecodeBinder& decoder, const Json::Value& json,
                            std::vector<T>& list) {
    detail::requireArray(json, "should be a list");
    list.clear();
    list.reserve(json.size());
    for (const Json::Value& element : json) {
      withIndex(list.size(), [&] {
        if (element.isNull()) detail::throwNotFound();
        readElement(decoder, element, list);
      });
    }
  }

  // Reads in place, since moving a large element is expensive. Removes an element that cannot be
  // read.
  static void readElement(JsonDecodeBinder& decoder, const Json::Value& json,
                          std::vector<T>& list) {
    if constexpr (std::is_same_v<T, bool>) {
      bool value = false;
      FieldCodec<T>::read(decoder, json, value);
      list.push_back(value);
    } else {
      T& value = list.emplace_back();
      try {
        FieldCodec<T>::read(decoder, json, value);
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
};

}  // namespace cppbind
