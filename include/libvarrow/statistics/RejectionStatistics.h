// The reasons for which things were not done.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/thread/mutex.hpp>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/CommonStatistics.h"

namespace libvarrow {

/// The candidates that a planner examined for each subject (an order, a patient) and the reasons
/// for which it rejected them. For each pair of subject and reason it keeps the number of rejected
/// candidates and one of them: the nearest miss, which was short by least.
///
///     RejectionStatistics* rejections = container->getRejectionStatistics("placing");
///     rejections->rejected("C017", "OT1 2024-03-04 07:00", "surgeon off duty");
///     rejections->rejected("C017", "OT2 2024-03-08 12:45", "room too short", minutes(30));
///     rejections->placed("C018");
///
/// A reason is one of few texts: numbers belong into the candidate's text, or are the amount that
/// it was short by. The result does not depend on the order of the calls, unless the statistic is
/// full: calls for further pairs are only counted.
///
/// Thread-safe, except that two objects must not be merged into each other at the same time (a
/// deadlock). A call for a known pair does not allocate memory, unless its candidate becomes the
/// one to keep.
///
/// Rendered as {"__rejections__": {"dropped": 0, "subjects": {"C017": {"placed": false, "examined":
/// 92, "reasons": {"room too short": {"count": 31, "nearest": "OT2 2024-03-08 12:45", "short_by":
/// "00:30:00"}, "surgeon off duty": {"count": 61, "example": "OT1 2024-03-04 07:00"}}}}}}.
/// "examined" is the sum of the counts, "dropped" the number of calls that were not recorded. A
/// duration is written in whole seconds.
class LIBVARROW_API RejectionStatistics : public CommonStatistics {
 public:
  /// The default of the largest number of pairs: about 25 MB with short texts.
  static constexpr std::size_t kMaxPairs = 100'000;

  /// Sets the largest number of pairs of subject and reason, and of subjects.
  explicit RejectionStatistics(std::size_t maxPairs = kMaxPairs) : maxPairs_(maxPairs) {}

  ///@{
  /// Records that `candidate` was rejected for `subject`, and the amount that it was short by: a
  /// number in the host's unit, or a duration. The candidate that is kept has the least amount,
  /// then the smallest text. One without an amount, or with one that is infinite or not a number,
  /// is kept only without another. Use one kind of amount for a reason: any duration counts
  /// as less than any number.
  void rejected(std::string_view subject, std::string_view candidate, std::string_view reason);
  void rejected(std::string_view subject, std::string_view candidate, std::string_view reason,
                double shortBy);
  void rejected(std::string_view subject, std::string_view candidate, std::string_view reason,
                const boost::posix_time::time_duration& shortBy);
  ///@}
  /// Records that a candidate was found for `subject`.
  void placed(std::string_view subject);

  /// Adds the records of `other` (another object, left unchanged). Holds this object's lock while
  /// it takes the other's.
  void merge(RejectionStatistics* other);

  Json::Value toJsonValue4Bind() const override;

 private:
  // Members are compared in this order; those of other kinds are 0.
  enum class ShortBy : unsigned char { Duration, Number, Nothing };
  template <class Text>
  struct Miss {
    ShortBy kind = ShortBy::Nothing;
    std::int64_t ticks = 0;
    double number = 0;
    Text candidate{};
  };
  struct Rejections {
    std::uint64_t count = 0;
    Miss<std::string> nearest{};
  };
  struct Pair {
    std::string_view subject, reason;
    bool operator==(const Pair& other) const {
      return subject == other.subject && reason == other.reason;
    }
  };
  struct PairHash {
    std::size_t operator()(const Pair& pair) const;
  };

  void add(const Pair& pair, std::uint64_t count, const Miss<std::string_view>& miss);
  Rejections* recordOf(const Pair& pair);
  void place(const std::string& subject);
  static Json::Value jsonOf(const Rejections& rejections);

  mutable boost::mutex mutex_;
  const std::size_t maxPairs_;
  std::uint64_t dropped_ = 0;
  std::unordered_map<std::string, bool> subjects_;  // and whether they are placed
  std::unordered_set<std::string> reasons_;
  std::unordered_map<Pair, Rejections, PairHash> pairs_;  // with the texts of the two above
};

}  // namespace libvarrow
