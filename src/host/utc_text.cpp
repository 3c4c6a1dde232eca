#include "host/utc_text.h"

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <cstdint>

namespace libvarrow::host {

namespace {

// Writes the last digits of `number` that end before `end`.
void write(char* end, std::int64_t number, int digits) {
  for (; digits > 0; --digits, number /= 10) *--end = static_cast<char>('0' + number % 10);
}

}  // namespace

// Without the formatting of Boost, which costs more than the rest of a step's record.
std::string utcText(std::chrono::system_clock::time_point time) {
  constexpr std::int64_t kMicrosOfDay = 86'400'000'000;
  const std::int64_t micros =
      std::chrono::duration_cast<std::chrono::microseconds>(time.time_since_epoch()).count();
  const std::int64_t clock = micros % kMicrosOfDay;
  const auto day = (boost::gregorian::date(1970, 1, 1) +
                    boost::gregorian::days(static_cast<long>(micros / kMicrosOfDay)))
                       .year_month_day();
  std::string text = "0000-00-00T00:00:00.000000Z";
  write(&text[4], day.year, 4);
  write(&text[7], day.month.as_number(), 2);
  write(&text[10], day.day, 2);
  write(&text[13], clock / 3'600'000'000, 2);
  write(&text[16], clock / 60'000'000 % 60, 2);
  write(&text[19], clock / 1'000'000 % 60, 2);
  write(&text[26], clock % 1'000'000, 6);
  return text;
}

}  // namespace libvarrow::host
