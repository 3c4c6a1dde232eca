// Counts by text key.
#pragma once

#include <boost/thread/mutex.hpp>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

/// A count of each key's occurrences. Thread-safe, except that two objects must not be merged into
/// each other at the same time (a deadlock).
///
/// Rendered as null while empty, else as an object with "count=1, proportion=25%" under each key,
/// the sum of all counts under "__sum__" and the number of keys under "__key_count__".
class LIBVARROW_API DistributionStatistics : public CommonStatistics {
 public:
  DistributionStatistics();

  /// Adds `n` to the count of `key`.
  void inc(const std::string& key, std::uint64_t n);

  /// Adds the counts of `other` (another object, left unchanged), key by key. Holds this object's
  /// lock while it takes the other's.
  void merge(DistributionStatistics* other);

  /// Returns a copy of the counts.
  std::map<std::string, std::uint64_t> get() const;
  /// Returns the sum of all counts.
  std::uint64_t getCountSum() const;

  Json::Value toJsonValue4Bind() const override;

 private:
  struct KeyHash {
    std::size_t operator()(const std::string& key) const;
  };

  void incInternal(const std::string& key, std::uint64_t n);
  std::uint64_t countSumInternal() const;

  mutable boost::mutex mutex_;
  // Sorted when it is rendered or copied.
  std::unordered_map<std::string, std::uint64_t, KeyHash> counts_;
};

}  // namespace libvarrow
