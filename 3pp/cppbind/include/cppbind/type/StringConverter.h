// Fields that stand in JSON as text: dates, times, durations, shared strings.
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

/// Turns values of one type into text and back. Implementations are stateless and thread safe.
class CPPBIND_API StringConverter {
 public:
  /// The text of the value held in `value`. Throws boost::bad_any_cast when it is of another type.
  virtual std::string toString(const boost::any& value) const = 0;
  /// The value that `text` stands for. Throws ParseErrorException when it stands for none.
  virtual boost::any fromString(const std::string& text) const = 0;
  virtual ~StringConverter();
  /// This object as a `const TypedStringConverter<T>*` where `type` is T and it is one, else null:
  /// binders go that way when there is one.
  virtual const void* typed(std::type_index) const { return nullptr; }
};

/// What converts a `T` without a boost::any around it.
template <class T>
class TypedStringConverter {
 public:
  /// The text of `value`.
  virtual std::string textOf(const T& value) const = 0;
  /// The value that `text` stands for. Throws ParseErrorException when it stands for none.
  virtual T valueOf(std::string_view text) const = 0;

 protected:
  ~TypedStringConverter() = default;
};

/// A converter for `T` from two static operations of `Impl`: std::string toString(const T&) and
/// T fromString(std::string_view), or from a const std::string&. Give it to
/// BinderImpBase::setConverter.
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

/// The string itself. A null pointer has no text: it fails the shared pointer's own assertion.
struct CPPBIND_API StringPtrText {
  /// A copy of the string; `value` is not null.
  static std::string toString(const boost::shared_ptr<std::string>& value);
  /// A new string.
  static boost::shared_ptr<std::string> fromString(std::string_view text);
};

/// "%Y-%m-%d", and read as BoostPTimeText is. Text that is no date: "cant not parse [TEXT] as
/// date".
struct CPPBIND_API BoostGDateText {
  /// "2024-03-05".
  static std::string toString(const boost::gregorian::date& value);
  /// The date; throws ParseErrorException.
  static boost::gregorian::date fromString(std::string_view text);
};

/// "%Y-%m-%d %H:%M:%S"; fractions of a second are not written. Text that is no time point:
/// "cant not parse [TEXT] as time".
///
/// Reading is as free as the date-time library's: other separators, missing parts at the end
/// ("2024-03" is the first of March), minutes and seconds past 59 and a clock past 24 hours, which
/// carry over, and text behind the value are accepted; so are the names of special values
/// ("not-a-date-time", "+infinity"): ask is_special() where a field must hold a real time.
struct CPPBIND_API BoostPTimeText {
  /// "2024-03-05 07:08:09".
  static std::string toString(const boost::posix_time::ptime& value);
  /// The time point; throws ParseErrorException.
  static boost::posix_time::ptime fromString(std::string_view text);
};

/// "%H:%M:%S"; hours go past 24 (but only two digits are read), neither sign nor fraction is
/// written. Read as BoostPTimeText is: "90" is 90 hours. Text that is no duration: "cant not parse
/// [TEXT] as duration".
struct CPPBIND_API BoostTimeDurationText {
  /// "26:05:03".
  static std::string toString(const boost::posix_time::time_duration& value);
  /// The duration; throws ParseErrorException.
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
