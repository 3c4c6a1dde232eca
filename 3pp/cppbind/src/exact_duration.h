// Durations as exact texts. The texts in files have neither a sign nor a fraction.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace cppbind::detail {

/// Text form of durations in conditions.
struct ExactDurationText {
  /// Returns "26:05:03", "-01:00:00.5" or the name of a special value.
  static std::string toString(const boost::posix_time::time_duration& value);
  /// Throws ParseErrorException when `text` has another form.
  static boost::posix_time::time_duration fromString(std::string_view text);
};

/// Returns the duration that `text` represents, or nothing.
std::optional<boost::posix_time::time_duration> exactDuration(const std::string& text);

}  // namespace cppbind::detail
