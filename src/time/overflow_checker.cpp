#include "libvarrow/time/overflow_checker.h"

#include <algorithm>

namespace libvarrow {

using boost::gregorian::date;
using boost::gregorian::date_duration;

namespace {

// A 32-bit sum that wraps around.
class Sum {
 public:
  explicit Sum(int value = 0) : bits_(static_cast<std::uint32_t>(value)) {}
  Sum& operator+=(int value) {
    bits_ += static_cast<std::uint32_t>(value);
    return *this;
  }
  Sum& operator-=(int value) {
    bits_ -= static_cast<std::uint32_t>(value);
    return *this;
  }
  int value() const { return static_cast<int>(bits_); }

 private:
  std::uint32_t bits_;
};

bool holdsNothing(const date_duration& window) {
  return window.get_rep().is_nan() || window < date_duration(1);
}

}  // namespace

std::uint64_t overflowsChecker(std::set<date> const& dates, date_duration const& window,
                               std::uint64_t limit, OverflowRange<date>* const range) {
  if (dates.empty() || holdsNothing(window)) return 0;
  auto first = dates.begin();
  std::uint64_t count = 1;
  for (auto current = std::next(first); current != dates.end(); ++current) {
    for (; first != current && !(*current - *first < window); ++first) --count;
    ++count;
    if (count <= limit) continue;
    if (range != nullptr) *range = {*first, *current};
    return count - limit;
  }
  return 0;
}

std::uint64_t overflowsChecker(std::vector<int> const& values, std::uint64_t window, int limit,
                               OverflowRange<std::uint64_t>* const range) {
  // A window over all values does not slide: callers limit the total elsewhere.
  if (window >= values.size()) return 0;
  Sum sum;
  for (std::size_t i = 0; i < window; ++i) sum += values[i];
  for (std::size_t i = window; i < values.size(); ++i) {
    sum += values[i];
    sum -= values[i - window];
    // The excess is reported only together with its range.
    if (sum.value() <= limit || range == nullptr) continue;
    *range = {i - window, i};
    Sum excess(sum.value());
    excess -= limit;
    return static_cast<std::uint64_t>(static_cast<std::int64_t>(excess.value()));
  }
  return 0;
}

}  // namespace libvarrow
