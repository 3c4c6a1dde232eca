// A counter.
#pragma once

#include <atomic>
#include <cstdint>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

namespace detail {

/// An empty base that keeps what derives from it on cache lines of its own.
struct alignas(64) CacheLineAligned {};

}  // namespace detail

/// Counts by atomic additions, from any thread. Rendered as an integer.
///
/// Each stands on its own cache line, so that counters made one after the other do not slow each
/// other down.
class LIBVARROW_API CountStatistics : public CommonStatistics, private detail::CacheLineAligned {
 public:
  /// Starts at `initial`.
  explicit CountStatistics(std::int64_t initial = 0) : count_(initial) {}

  /// One more.
  void inc() { inc(1); }
  /// `n` more; past 2^63 - 1 the count wraps around.
  void inc(std::uint64_t n) {
    count_.fetch_add(static_cast<std::int64_t>(n), std::memory_order_relaxed);
  }

  Json::Value toJsonValue4Bind() const override;

 protected:
  /// The count now.
  std::int64_t count() const { return count_.load(std::memory_order_relaxed); }

 private:
  std::atomic<std::int64_t> count_;
};

}  // namespace libvarrow
