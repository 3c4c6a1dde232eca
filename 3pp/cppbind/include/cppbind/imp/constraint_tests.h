// The tests of constraints on values.
#pragma once

#include <json/value.h>

#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "cppbind/BinderImpBase.h"
#include "cppbind/Description.h"
#include "cppbind/Export.h"
#include "cppbind/imp/field_type.h"

namespace cppbind::detail {

// Texts are compared without copies. A description keeps copies.
template <class T>
using BoundOf = std::conditional_t<std::is_same_v<T, std::string>, std::string_view, T>;
template <class T>
using OwnedBound = std::conditional_t<std::is_same_v<T, std::string_view>, std::string, T>;

CPPBIND_API Json::Value jsonOf(const BinderImpBase& binder, const FieldType& type,
                               const void* value);

inline Json::Value jsonOf(const BinderImpBase&, std::string_view text) {
  return Json::Value(text.data(), text.data() + text.size());
}
template <class T>
Json::Value jsonOf(const BinderImpBase& binder, const T& value) {
  return jsonOf(binder, fieldType<T>, &value);
}

// Returns false for a value without an order, such as NaN and not-a-date-time.
template <class T, class Other>
bool isAtLeast(const T& value, const Other& bound) {
  if constexpr (std::is_arithmetic_v<T>) {
    return value >= bound;
  } else {
    return bound < value || bound == value;
  }
}

template <class Bound>
struct AtLeast {
  Bound bound;

  template <class T>
  bool operator()(const T& value) const {
    return isAtLeast(value, bound);
  }
  AtLeast<OwnedBound<Bound>> owned() const { return {OwnedBound<Bound>(bound)}; }
  Constraint constraint(const BinderImpBase& binder) const {
    return {ConstraintKind::AtLeast, {jsonOf(binder, bound)}};
  }
};

template <class Bound>
struct AtMost {
  Bound bound;

  template <class T>
  bool operator()(const T& value) const {
    return isAtLeast(bound, value);
  }
  AtMost<OwnedBound<Bound>> owned() const { return {OwnedBound<Bound>(bound)}; }
  Constraint constraint(const BinderImpBase& binder) const {
    return {ConstraintKind::AtMost, {jsonOf(binder, bound)}};
  }
};

template <class Range>
struct OneOf {
  Range values;

  template <class T>
  bool operator()(const T& value) const {
    for (const auto& allowed : values) {
      if (value == allowed) return true;
    }
    return false;
  }
  auto owned() const {
    using Value = OwnedBound<std::decay_t<decltype(*values.begin())>>;
    return OneOf<std::vector<Value>>{std::vector<Value>(values.begin(), values.end())};
  }
  Constraint constraint(const BinderImpBase& binder) const {
    Constraint made{ConstraintKind::OneOf, {}};
    for (const auto& allowed : values) made.values.push_back(jsonOf(binder, allowed));
    return made;
  }
};

struct NotEmpty {
  template <class T>
  bool operator()(const T& value) const {
    return !value.empty();
  }
  NotEmpty owned() const { return {}; }
  Constraint constraint(const BinderImpBase&) const { return {ConstraintKind::NotEmpty, {}}; }
};

template <class Predicate, class Words>
struct Satisfies {
  Predicate predicate;
  Words words;

  template <class T>
  bool operator()(const T& value) const {
    return static_cast<bool>(predicate(value));
  }
  Satisfies<Predicate, std::string> owned() const { return {predicate, std::string(words)}; }
  Constraint constraint(const BinderImpBase&) const {
    return {ConstraintKind::Satisfies, {}, std::string(words)};
  }
};

}  // namespace cppbind::detail
