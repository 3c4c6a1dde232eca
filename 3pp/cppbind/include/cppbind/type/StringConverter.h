// Converters for fields that are text in JSON: dates, times, durations, shared strings.
#pragma once

#include <boost/any.hpp>
#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/shared_ptr.hpp>
#include <string>
#include <string_view>
#include <type_traits>
#include <typeindex>

#include "cppbind/Export.h"

namespace cppbind {

/// Converter between values of one type and text. Implementations are stateless and thread-safe.
class CPPBIND_API StringConverter {
 public:
  /// Returns the text of the value in `value`. Throws boost::bad_any_cast when it has another type.
  virtual std::string toString(const boost::any& value) const = 0;
  /// Returns the value that `text` represents. Throws ParseErrorException when it represents none.
  virtual boost::any fromString(const std::string& text) const = 0;
  virtual ~StringConverter();
  /// Returns this object as a `const TypedStringConverter<T>*` when `type` is T and it is one,
  /// otherwise null. Binders prefer the typed converter.
  virtual const void* typed(std::type_index) const { return nullptr; }
};

/// Converter of `T` that needs no boost::any.
template <class T>
class TypedStringConverter {
 public:
  /// Returns the text of `value`.
  virtual std::string textOf(const T& value) const = 0;
  /// Returns the value that `text` represents. Throws ParseErrorException when it represents none.
  virtual T valueOf(std::string_view text) const = 0;

 protected:
  ~TypedStringConverter() = default;
};

/// Converter of `T` made of two static member functions of `Impl`: std::string toString(const T&),
/// and T fromString(std::string_view) or fromString(const std::string&). Pass it to
/// BinderImpBase::setConverter().
template <class T, class Impl>
class StringConverterT : public StringConverter, private TypedStringConverter<T> {
 public:
  std::string toString(const boost::any& value) const override {
    return Impl::toString(boost::any_cast<const T&>(value));
  }
  boost::any fromString(const std::string& text) const override { return Impl::fromString(text); }
  const void* typed(std::type_index type) const override {
    return type == typeid(T) ? static_cast<const TypedStringConverter<T>*>(this) : nullptr;
  }

 private:
  std::string textOf(const T& value) const override { return Impl::toString(value); }
  T valueOf(std::string_view text) const override {
    if constexpr (std::is_invocable_v<decltype(&Impl::fromString), std::string_view>) {
      return Impl::fromString(text);
    } else {
      return Impl::fromString(std::string(text));
    }
  }
};

/// Text form of a shared string: the string itself. A null pointer fails the shared pointer's own
/// assertion.
struct CPPBIND_API StringPtrText {
  /// Returns a copy of the string; `value` must not be null.
  static std::string toString(const boost::shared_ptr<std::string>& value);
  /// Returns a new string.
  static boost::shared_ptr<std::string> fromString(std::string_view text);
};

/// Text form of dates: "%Y-%m-%d", read by the rules of BoostPTimeText. The message for invalid
/// text is "cant not parse [TEXT] as date".
struct CPPBIND_API BoostGDateText {
  /// Returns "2024-03-05".
  static std::string toString(const boost::gregorian::date& value);
  /// Returns the date. Throws ParseErrorException when `text` is invalid.
  static boost::gregorian::date fromString(std::string_view text);
};

/// Text form of time points: "%Y-%m-%d %H:%M:%S", without fractions of a second. The message for
/// invalid text is "cant not parse [TEXT] as time".
///
/// Reading is as lenient as in the date-time library. It accepts other separators, missing parts at
/// the end ("2024-03" is the first of March), minutes and seconds over 59 and hours over 24, which
/// carry over, text after the value, and the names of special values ("not-a-date-time",
/// "+infinity"). Check is_special() where a field must be a real time.
struct CPPBIND_API BoostPTimeText {
  /// Returns "2024-03-05 07:08:09".
  static std::string toString(const boost::posix_time::ptime& value);
  /// Returns the time point. Throws ParseErrorException when `text` is invalid.
  static boost::posix_time::ptime fromString(std::string_view text);
};

/// Text form of durations: "%H:%M:%S", read by the rules of BoostPTimeText: "90" is 90 hours. Hours
/// may exceed 24, but only two digits are read; sign and fraction are not written. The message for
/// invalid text is "cant not parse [TEXT] as duration".
struct CPPBIND_API BoostTimeDurationText {
  /// Returns "26:05:03".
  static std::string toString(const boost::posix_time::time_duration& value);
  /// Returns the duration. Throws ParseErrorException when `text` is invalid.
  static boost::posix_time::time_duration fromString(std::string_view text);
};

///@{
/// The converters that every binder starts with.
using StringPtrConverter = StringConverterT<boost::shared_ptr<std::string>, StringPtrText>;
using BoostGDateConverter = StringConverterT<boost::gregorian::date, BoostGDateText>;
using BoostPTimeConverter = StringConverterT<boost::posix_time::ptime, BoostPTimeText>;
using BoostTimeDurationConverter =
    StringConverterT<boost::posix_time::time_duration, BoostTimeDurationText>;
///@}

}  // namespace cppbind
