#include "cppbind/type/StringConverter.h"

#include <boost/date_time/gregorian/gregorian.hpp>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/make_shared.hpp>
#include <cstdlib>
#include <locale>
#include <sstream>

#include "base/NeverDestroyed.h"
#include "base/thread_local_object.h"
#include "base/time_digits.h"
#include "cppbind/ParseErrorException.h"

namespace cppbind {

namespace {

using boost::gregorian::date;
using boost::gregorian::date_facet;
using boost::gregorian::date_input_facet;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using boost::posix_time::time_facet;
using boost::posix_time::time_input_facet;
namespace time_digits = libvarrow::base::time_digits;

constexpr const char* kDateFormat = "%Y-%m-%d";
constexpr const char* kTimeFormat = "%Y-%m-%d %H:%M:%S";
constexpr const char* kDurationFormat = "%H:%M:%S";

// Returns the classic locale with the facets of all three formats, made on first use.
const std::locale& formatLocale() {
  static libvarrow::base::NeverDestroyed<const std::locale> locale([] {
    std::locale made = std::locale::classic();
    made = std::locale(made, new date_facet(kDateFormat));
    made = std::locale(made, new date_input_facet(kDateFormat));
    auto* output = new time_facet(kTimeFormat);
    output->time_duration_format(kDurationFormat);
    made = std::locale(made, output);
    auto* input = new time_input_facet(kTimeFormat);
    input->time_duration_format(kDurationFormat);
    return std::locale(made, input);
  }());
  return *locale;
}

template <class Stream>
Stream formatStream() {
  Stream made;
  made.imbue(formatLocale());
  return made;
}

template <class T>
std::string writeByFacet(const T& value) {
  return libvarrow::base::withThreadLocal(formatStream<std::ostringstream>,
                                          [&](std::ostringstream& stream) {
                                            stream.str(std::string());
                                            stream.clear();
                                            stream << value;
                                            return stream.str();
                                          });
}

[[noreturn]] void throwUnreadable(std::string_view text, const char* kind) {
  throw ParseErrorException("cant not parse [" + std::string(text) + "] as " + kind);
}

template <class T>
T readByFacet(std::string_view text, const char* kind) {
  return libvarrow::base::withThreadLocal(formatStream<std::istringstream>,
                                          [&](std::istringstream& stream) {
                                            stream.str(std::string(text));
                                            stream.clear();
                                            T value;
                                            if (!(stream >> value)) throwUnreadable(text, kind);
                                            return value;
                                          });
}

}  // namespace

StringConverter::~StringConverter() = default;

std::string StringPtrText::toString(const boost::shared_ptr<std::string>& value) {
  return *value;
}

boost::shared_ptr<std::string> StringPtrText::fromString(std::string_view text) {
  return boost::make_shared<std::string>(text);
}

std::string BoostGDateText::toString(const date& value) {
  if (value.is_special()) return writeByFacet(value);
  char text[time_digits::kMaxLength];
  return std::string(text, time_digits::writeDate(text, value));
}

date BoostGDateText::fromString(std::string_view text) {
  date value;
  return time_digits::readDate(text, value) ? value : readByFacet<date>(text, "date");
}

std::string BoostPTimeText::toString(const ptime& value) {
  if (value.is_special()) return writeByFacet(value);
  char text[time_digits::kMaxLength];
  return std::string(text, time_digits::writeTime(text, value));
}

ptime BoostPTimeText::fromString(std::string_view text) {
  ptime value;
  if (time_digits::readTime(text, value)) return value;
  value = readByFacet<ptime>(text, "time");
  // A clock of 99 hours may exceed the last day that can be written.
  if (!value.is_special() && value > ptime(boost::posix_time::max_date_time)) {
    throwUnreadable(text, "time");
  }
  return value;
}

std::string BoostTimeDurationText::toString(const time_duration& value) {
  if (value.is_special()) return writeByFacet(value);
  // Writes no sign, as the facet does. Writes hours of three digits in full, at which the facet
  // would stop.
  time_digits::ClockParts parts = time_digits::clockParts(value);
  parts = {std::abs(parts.hours), std::abs(parts.minutes), std::abs(parts.seconds)};
  char text[time_digits::kMaxLength];
  return std::string(text, time_digits::writeClock(text, parts));
}

time_duration BoostTimeDurationText::fromString(std::string_view text) {
  time_duration value;
  return time_digits::readDuration(text, value) ? value
                                                : readByFacet<time_duration>(text, "duration");
}

}  // namespace cppbind
