// The handle on a field: constraints on its value, and its text for users.
#pragma once

#include <json/value.h>

#include <functional>
#include <initializer_list>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "cppbind/Description.h"
#include "cppbind/Export.h"
#include "cppbind/imp/constraint_tests.h"
#include "cppbind/imp/field_path.h"

namespace cppbind {

class Binder;

namespace detail {

// The part of a handle that is not a template.
class CPPBIND_API FieldHandle {
 protected:
  FieldHandle(const Binder& binder, std::string_view key, FieldDescription* noted)
      : binder_(&binder), key_(key), noted_(noted) {}

  JsonDecodeBinder& decoder() const;
  static const BinderImpBase& binderOf(const JsonDecodeBinder& decoder);
  bool isWhole() const { return key_.data() == nullptr; }
  // Returns the JSON of the field. Call it only for a field that was read.
  const Json::Value& json() const;
  // Adds the key to the path of the current exception.
  [[noreturn]] void rethrowAtField() const;
  [[noreturn]] static void throwBroken(const Constraint& constraint, const Json::Value& value);
  void noteAbout(std::size_t depth, std::string_view text) const;
  void noteConstraint(
      std::size_t depth, Constraint constraint,
      std::function<void(JsonDecodeBinder&, const Json::Value&, const void*)>) const;

  const Binder* binder_;
  std::string_view key_;
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
  Field& atLeast(const Bound& least) { return require(detail::AtLeast<Bound>{least}); }
  /// Requires a value that is not more than `most`: "7 is more than 5".
  Field& atMost(const Bound& most) { return require(detail::AtMost<Bound>{most}); }
  /// Requires a value from `least` to `most`, with the messages of atLeast() and atMost().
  Field& between(const Bound& least, const Bound& most) { return atLeast(least).atMost(most); }
  ///@{
  /// Requires one of these values: "\"FOO\" is not one of \"SPT\", \"MWKR\"".
  Field& oneOf(std::initializer_list<Bound> values) {
    return require(detail::OneOf<std::initializer_list<Bound>>{values});
  }
  Field& oneOf(const std::vector<Value>& values) {
    return require(detail::OneOf<const std::vector<Value>&>{values});
  }
  ///@}
  /// Requires a text, list, set or map that is not empty: "is empty".
  Field& notEmpty() { return require(detail::NotEmpty{}); }
  /// Requires that `predicate` returns true for the value. `words` state the condition, such as
  /// "must be even", and are the message. The predicate is a function or a lambda that captures
  /// nothing, since descriptions keep it longer than the object.
  template <class Predicate>
  Field& satisfies(const Predicate& predicate, std::string_view words) {
    using Kept = std::decay_t<Predicate>;
    static_assert(std::is_empty_v<Kept> || std::is_pointer_v<Kept>,
                  "a predicate captures nothing: descriptions keep it longer than the object");
    return require(detail::Satisfies<Kept, std::string_view>{predicate, words});
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

  template <class Test>
  Field& require(const Test& test) {
    if (field_ != nullptr) {
      if (!Path::all(*field_, test)) refuse(test);
    } else if (noted_ != nullptr) {
      note(test);
    }
    return *this;
  }

  template <class Test>
  static void check(JsonDecodeBinder& decoder, const Json::Value& json, const T& field,
                    const Test& test) {
    Path::visit(decoder, json, field, [&](const Json::Value&, const Value& value) {
      if (!test(value)) broken(decoder, test, value);
    });
  }

  template <class Test>
  [[noreturn]] static void broken(const JsonDecodeBinder& decoder, const Test& test,
                                  const Value& value) {
    const BinderImpBase& binder = binderOf(decoder);
    throwBroken(test.constraint(binder), detail::jsonOf(binder, value));
  }

  template <class Test>
  void refuse(const Test& test) const {
    try {
      check(decoder(), json(), *field_, test);
    } catch (...) {
      rethrowAtField();
    }
  }

  template <class Test>
  void note(const Test& test) const {
    noteConstraint(Path::depth, test.constraint(binderOf(decoder())),
                   [owned = test.owned()](JsonDecodeBinder& decoder, const Json::Value& json,
                                          const void* field) {
                     check(decoder, json, *static_cast<const T*>(field), owned);
                   });
  }

  const T* field_;
};

}  // namespace cppbind

#include "cppbind/imp/binder.h"
