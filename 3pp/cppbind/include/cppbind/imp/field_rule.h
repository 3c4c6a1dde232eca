// A condition on the values of a field as a table of functions, for code that is not a template.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include "cppbind/Description.h"
#include "cppbind/Export.h"
#include "cppbind/imp/field_path.h"
#include "cppbind/imp/field_type.h"

namespace cppbind::detail {

// Texts are compared without copies.
template <class T>
using BoundOf = std::conditional_t<std::is_same_v<T, std::string>, std::string_view, T>;

///@{
/// Returns true for not-a-date-time. Its operators order it after all dates and times.
template <class T>
auto isWithoutOrder(const T& value, int) -> decltype(value.is_not_a_date_time()) {
  return value.is_not_a_date_time();
}
template <class T>
auto isWithoutOrder(const T& value, int) -> decltype(value.is_not_a_date()) {
  return value.is_not_a_date();
}
template <class T>
bool isWithoutOrder(const T&, long) {
  return false;
}
///@}

// Returns false for a value without an order, such as NaN and not-a-date-time.
template <class T, class Other>
bool isAtLeast(const T& value, const Other& bound) {
  if constexpr (std::is_arithmetic_v<T>) {
    return value >= bound;
  } else {
    if (isWithoutOrder(value, 0) || isWithoutOrder(bound, 0)) return false;
    return bound < value || bound == value;
  }
}

// Functions of the type of bounds, or of a predicate. Descriptions keep copies of bounds.
struct BoundType {
  std::size_t size;
  void* (*copy)(const void* bound);  // null for a type whose bytes can be copied
  void (*destroy)(void* bound);      // null, too
  const FieldType& (*json)();        // writes a bound; null for text and predicates
};

template <class Bound>
CPPBIND_COLD void* copyOf(const void* bound) {
  return ::new Bound(*static_cast<const Bound*>(bound));
}
template <class Bound>
CPPBIND_COLD void destroyCopy(void* bound) {
  ::delete static_cast<Bound*>(bound);
}

// Copies a std::string_view with its text.
CPPBIND_API void* copyOfText(const void* text);
CPPBIND_API void destroyText(void* text);

// The address of an imported function is not a constant on every platform.
inline void* copyText(const void* text) {
  return copyOfText(text);
}
inline void destroyTextCopy(void* text) {
  destroyText(text);
}

template <class Bound>
constexpr BoundType boundTypeOf(const FieldType& (*json)()) {
  if constexpr (std::is_trivially_copyable_v<Bound>) {
    return {sizeof(Bound), nullptr, nullptr, json};
  } else {
    return {sizeof(Bound), &copyOf<Bound>, &destroyCopy<Bound>, json};
  }
}

template <class Bound>
inline constexpr BoundType boundType = boundTypeOf<Bound>(&fieldType<Bound>);
template <>
inline constexpr BoundType boundType<std::string_view>{sizeof(std::string_view), &copyText,
                                                       &destroyTextCopy, nullptr};
template <class Predicate>
inline constexpr BoundType predicateType = boundTypeOf<Predicate>(nullptr);

// A condition, with borrowed bounds.
struct Rule {
  ConstraintKind kind;
  bool (*test)(const void* value, const void* bound);  // with one bound, or null
  const void* bounds;                                  // an array
  std::size_t count;
  const BoundType* type;  // null without bounds
  std::string_view words;
};

// The tests of rules.
template <class Value>
struct Tests {
  using Bound = BoundOf<Value>;

  static bool atLeast(const void* value, const void* bound) {
    return isAtLeast(of(value), *static_cast<const Bound*>(bound));
  }
  static bool atMost(const void* value, const void* bound) {
    return isAtLeast(*static_cast<const Bound*>(bound), of(value));
  }
  static bool equals(const void* value, const void* bound) {
    return of(value) == *static_cast<const Bound*>(bound);
  }
  static bool notEmpty(const void* value, const void*) { return !of(value).empty(); }
  template <class Predicate>
  static bool satisfies(const void* value, const void* predicate) {
    return static_cast<bool>((*static_cast<const Predicate*>(predicate))(of(value)));
  }

 private:
  static const Value& of(const void* value) { return *static_cast<const Value*>(value); }
};

// Functions of the values that a condition on a field of one type applies to.
struct RuledValues {
  const FieldType& (*type)();  // of the values
  std::size_t depth;           // of elements in elements
  // Null: the field is the value.
  void (*visit)(JsonDecodeBinder& decoder, const Json::Value& json, const void* field,
                const ValueVisitor& visitor);
};

template <class T, class Path>
CPPBIND_COLD void visitValues(JsonDecodeBinder& decoder, const Json::Value& json, const void* field,
                              const ValueVisitor& visitor) {
  Path::visit(
      decoder, json, *static_cast<const T*>(field),
      [&](const Json::Value&, const auto& value) { visitor.visit(visitor.context, &value); });
}

template <class T, class Path>
constexpr RuledValues ruledValuesOf() {
  using Value = typename Path::template Value<T>;
  if constexpr (std::is_same_v<Path, Itself> && std::is_same_v<Value, T>) {
    return {&fieldType<Value>, Path::depth, nullptr};
  } else {
    return {&fieldType<Value>, Path::depth, &visitValues<T, Path>};
  }
}

template <class T, class Path>
inline constexpr RuledValues ruledValues = ruledValuesOf<T, Path>();

}  // namespace cppbind::detail
