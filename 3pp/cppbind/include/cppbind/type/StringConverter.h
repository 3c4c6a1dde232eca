// Fields that stand in JSON as text: dates, times, durations, shared strings.
#pragma once

#include <boost/any.hpp>
#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/shared_ptr.hpp>
#include <string>

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
};

/// A converter for `T` from two static operations of `Impl`: std::string toString(const T&) and
/// T fromString(const std::string&). Give it to BinderImpBase::setConverter.
template <class T, class Impl>
class StringConverterT : public StringConverter {
 public:
  std::string toString(const boost::any& value) const override {
    return Impl::toString(boost::any_cast<const T&>(value));
  }
  boost::any fromString(const std::string& text) const override { return Impl::fromString(text); }
};

/// The string itself. A null pointer has no text: it fails the shared pointer's own assertion.
struct CPPBIND_API StringPtrText {
  static std::string toString(const boost::shared_ptr<std::string>& value);
  static boost::shared_ptr<std::string> fromString(const std::string& text);
};

/// "%Y-%m-%d". Text that is no date: "cant not parse [TEXT] as date".
struct CPPBIND_API BoostGDateText {
  static std::string toString(const boost::gregorian::date& value);
  static boost::gregorian::date fromString(const std::string& text);
};

/// "%Y-%m-%d %H:%M:%S"; fractions of a second are not written. Text that is no time point:
/// "cant not parse [TEXT] as time".
struct CPPBIND_API BoostPTimeText {
  static std::string toString(const boost::posix_time::ptime& value);
  static boost::posix_time::ptime fromString(const std::string& text);
};

/// "%H:%M:%S"; hours go past 24 (but only two digits are read), neither sign nor fraction is
/// written. Text that is no duration: "cant not parse [TEXT] as duration".
struct CPPBIND_API BoostTimeDurationText {
  static std::string toString(const boost::posix_time::time_duration& value);
  static boost::posix_time::time_duration fromString(const std::string& text);
};

using StringPtrConverter = StringConverterT<boost::shared_ptr<std::string>, StringPtrText>;
using BoostGDateConverter = StringConverterT<boost::gregorian::date, BoostGDateText>;
using BoostPTimeConverter = StringConverterT<boost::posix_time::ptime, BoostPTimeText>;
using BoostTimeDurationConverter =
    StringConverterT<boost::posix_time::time_duration, BoostTimeDurationText>;

}  // namespace cppbind
