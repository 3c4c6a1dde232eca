#include "exact_duration.h"

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdlib>
#include <exception>

#include "cppbind/ParseErrorException.h"
#include "cppbind/type/StringConverter.h"

namespace cppbind::detail {

using boost::posix_time::time_duration;

namespace {

// The digits after the point, without zeros at the end.
std::string fractionOf(const time_duration& value) {
  std::string digits = std::to_string(std::abs(value.fractional_seconds()));
  digits.insert(0, time_duration::num_fractional_digits() - digits.size(), '0');
  digits.erase(digits.find_last_not_of('0') + 1);
  return digits;
}

}  // namespace

std::string ExactDurationText::toString(const time_duration& value) {
  std::string text = BoostTimeDurationText::toString(value);
  if (value.is_special()) return text;
  if (value.is_negative()) text.insert(0, 1, '-');
  const std::string fraction = fractionOf(value);
  return fraction.empty() ? text : text + "." + fraction;
}

time_duration ExactDurationText::fromString(std::string_view text) {
  const std::optional<time_duration> value = exactDuration(std::string(text));
  if (!value) throw ParseErrorException("cant not parse [" + std::string(text) + "] as duration");
  return *value;
}

std::optional<time_duration> exactDuration(const std::string& text) {
  for (const auto special : {boost::date_time::not_a_date_time, boost::date_time::pos_infin,
                             boost::date_time::neg_infin}) {
    if (text == BoostTimeDurationText::toString(time_duration(special))) {
      return time_duration(special);
    }
  }
  try {
    return boost::posix_time::duration_from_string(text);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace cppbind::detail
