// The handle on a field: constraints on its value, and its text for users.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <string_view>
#include <type_traits>
#include <vector>

#include "cppbind/Description.h"
#include "cppbind/Export.h"
#include "cppbind/imp/field_path.h"
#include "cppbind/imp/field_rule.h"

namespace cppbind {

class Binder;

namespace detail {

// The part of a handle that is not a template.
class CPPBIND_API FieldHandle {
 protected:
  FieldHandle(const Binder& binder, std::string_view key, FieldDescription* noted)
      : binder_(&binder), key_(key), noted_(noted) {}

  // Throws for the first value of `field` that breaks the rule; without a field, notes the rule.
  void handle(const Rule& rule, const RuledValues& values, const void* field) const;
  void noteAbout(std::size_t depth, std::string_view text) const;

  const Binder* binder_;
  std::string_view key_;     // without an address for a whole value
  FieldDescription* noted_;  // not null while the field is described
};

}  // namespace detail

/// Handle on a field, the result of Binder::field(). Its functions state conditions on the value
/// and document the field:
///
///     binder->field("tries", tries_, 1).atLeast(1).about("How many schedules are tried.");
///     binder->field("noise", noise_, 0.0).between(0, 1);
///     binder->field("sizes", sizes_).notEmpty().each().atLeast(1).about("Pieces in one box.");
///
/// Conditions are checked where a value is read: not on a default, and not when fields are written.
/// Each function throws ParseErrorException at the field's path for a value that breaks its
/// condition: "modules[2].Dispatch.tries: 0 is less than 1". For a std::optional, conditions apply
/// to the value inside, if any. A handle is valid during the call of setBind; its key must remain
/// valid, too. `Path` leads to the values: the field itself or its elements.
template <class T, class Path>
class Field : private detail::FieldHandle {
 public:
  /// The type that conditions apply to.
  using Value = typename Path::template Value<T>;
  /// The type of bounds: std::string_view for text, otherwise Value.
  using Bound = detail::BoundOf<Value>;

  /// Documents the field, or its elements after each(). The last text counts.
  Field& about(std::string_view text) {
    if (noted_ != nullptr) noteAbout(Path::depth, text);
    return *this;
  }
  /// Requires a value that is not less than `least`: "0 is less than 1". NaN breaks every bound.
  Field& atLeast(const Bound& least) {
    if (concerns([&](const Value& value) { return Tests::atLeast(&value, &least); })) {
      handle(ConstraintKind::AtLeast, &Tests::atLeast, &least, 1);
    }
    return *this;
  }
  /// Requires a value that is not more than `most`: "7 is more than 5".
  Field& atMost(const Bound& most) {
    if (concerns([&](const Value& value) { return Tests::atMost(&value, &most); })) {
      handle(ConstraintKind::AtMost, &Tests::atMost, &most, 1);
    }
    return *this;
  }
  /// Requires a value from `least` to `most`, with the messages of atLeast() and atMost().
  Field& between(const Bound& least, const Bound& most) { return atLeast(least).atMost(most); }
  ///@{
  /// Requires one of these values: "\"FOO\" is not one of \"SPT\", \"MWKR\"".
  Field& oneOf(std::initializer_list<Bound> values) { return oneOf(values.begin(), values.size()); }
  Field& oneOf(const std::vector<Value>& values) {
    const std::vector<Bound> bounds(values.begin(), values.end());
    return oneOf(bounds.data(), bounds.size());
  }
  ///@}
  /// Requires a text, list, set or map that is not empty: "is empty".
  Field& notEmpty() {
    if (concerns([](const Value& value) { return !value.empty(); })) {
      handle({ConstraintKind::NotEmpty, &Tests::notEmpty, nullptr, 0, nullptr, {}});
    }
    return *this;
  }
  /// Requires that `predicate` returns true for the value. `words` state the condition, such as
  /// "must be even", and are the message. The predicate is a function or a lambda that captures
  /// nothing, since descriptions keep it longer than the object. An exception that it throws gets
  /// the path of the value.
  template <class Predicate>
  Field& satisfies(const Predicate& predicate, std::string_view words) {
    using Kept = std::decay_t<const Predicate&>;
    static_assert(std::is_empty_v<Kept> || std::is_pointer_v<Kept>,
                  "a predicate must not have captures: descriptions outlive the object");
    // A predicate that throws is called again by handle(), which adds the path.
    const auto holds = [&](const Value& value) {
      try {
        return static_cast<bool>(predicate(value));
      } catch (...) {
        return false;
      }
    };
    if (concerns(holds)) {
      const Kept kept = predicate;
      handle({ConstraintKind::Satisfies, &Tests::template satisfies<Kept>, &kept, 1,
              &detail::predicateType<Kept>, words});
    }
    return *this;
  }
  /// Returns the handle on the elements of a list, a set or a map. A condition that an element
  /// breaks names it in the path: "sizes[3]: 0 is less than 1".
  Field<T, detail::EachOf<Path>> each() const { return {*binder_, key_, field_, noted_}; }

 private:
  friend class Binder;
  template <class, class>
  friend class Field;

  // `field` is null unless its value was read.
  Field(const Binder& binder, std::string_view key, const T* field, FieldDescription* noted)
      : FieldHandle(binder, key, noted), field_(field) {}

  using Tests = detail::Tests<Value>;

  // Returns true when the field is described or has a value that breaks the condition.
  template <class Test>
  bool concerns(const Test& test) const {
    return field_ != nullptr ? !Path::all(*field_, test) : noted_ != nullptr;
  }

  Field& oneOf(const Bound* values, std::size_t count) {
    const auto isAllowed = [&](const Value& value) {
      for (std::size_t i = 0; i < count; ++i) {
        if (value == values[i]) return true;
      }
      return false;
    };
    if (concerns(isAllowed)) handle(ConstraintKind::OneOf, &Tests::equals, values, count);
    return *this;
  }

  CPPBIND_COLD void handle(ConstraintKind kind, bool (*test)(const void*, const void*),
                           const Bound* bounds, std::size_t count) const {
    handle({kind, test, bounds, count, &detail::boundType<Bound>, {}});
  }
  CPPBIND_COLD void handle(const detail::Rule& rule) const {
    FieldHandle::handle(rule, detail::ruledValues<T, Path>, field_);
  }

  const T* field_;
};

}  // namespace cppbind

#include "cppbind/imp/binder.h"
