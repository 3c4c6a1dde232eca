// A counter.
#pragma once

#include <atomic>
#include <cstdint>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

namespace detail {

/// An empty base that places derived objects on separate cache lines.
struct alignas(64) CacheLineAligned {};

}  // namespace detail

/// A counter with atomic additions. Rendered as an integer. Thread-safe.
///
/// Each counter has a separate cache line, so that counters created one after the other do not slow
/// each other down.
class LIBVARROW_API CountStatistics : public CommonStatistics, private detail::CacheLineAligned {
 public:
  /// Starts at `initial`.
  explicit CountStatistics(std::int64_t initial = 0) : count_(initial) {}

  /// Adds 1.
  void inc() { inc(1); }
  /// Adds `n`; beyond 2^63 - 1 the count wraps around.
  void inc(std::uint64_t n) {
    count_.fetch_add(static_cast<std::int64_t>(n), std::memory_order_relaxed);
  }

  Json::Value toJsonValue4Bind() const override;

 protected:
  /// Returns the current count.
  std::int64_t count() const { return count_.load(std::memory_order_relaxed); }

 private:
  std::atomic<std::int64_t> count_;
};

}  // namespace libvarrow
