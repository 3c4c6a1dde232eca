// A time zone that no machine uses.
#pragma once

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdlib>
#include <string>

#include "support/environment.h"

namespace test_support {

/// RAII guard: local time is 11 hours and 30 minutes ahead of UTC.
class FarZone {
 public:
  FarZone() : before_(std::getenv("TZ") == nullptr ? "" : std::getenv("TZ")) { set("FAR-11:30"); }
  ~FarZone() { set(before_); }

  ///@{
  /// Returns the local time to the second, such as "20240305T070809", for comparison as text.
  /// The clock of whole seconds may be some milliseconds later than that of microseconds.
  static std::string before() { return text(boost::posix_time::second_clock::universal_time()); }
  static std::string after() { return text(boost::posix_time::microsec_clock::universal_time()); }
  ///@}

 private:
  static std::string text(const boost::posix_time::ptime& time) {
    return to_iso_string(time + boost::posix_time::minutes(11 * 60 + 30)).substr(0, 15);
  }
  static void set(const std::string& zone) {
    zone.empty() ? unsetVariable("TZ") : setVariable("TZ", zone);
    readTimeZone();
  }

  const std::string before_;
};

/// Returns a text such as "2024-03-05 07:08:09" in the form of FarZone::before().
inline std::string isoTime(const std::string& text) {
  std::string digits;
  for (const char c : text) {
    if (c >= '0' && c <= '9') digits += c;
    if (digits.size() == 8) digits += 'T';
  }
  return digits;
}

}  // namespace test_support
