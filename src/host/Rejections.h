// The rejections in the statistics of a run.
#pragma once

#include <json/value.h>

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace libvarrow::host {

/// The rejected candidates of one subject for one reason.
struct Rejection {
  std::uint64_t count = 0;
  std::string candidate{};  ///< the nearest miss, or an example
  Json::Value shortBy{};    ///< a text or a number; null for an example
};

/// The verdict on one subject.
struct Verdict {
  bool isPlaced = false;
  std::map<std::string, Rejection> rejections{};  ///< by reason

  std::uint64_t examined() const;
  /// Returns the rejections, the most frequent first, then by reason.
  std::vector<std::pair<std::string, Rejection>> byCount() const;
  /// Adds the records of another statistic.
  void merge(const Verdict& other);
};

/// The rejections of all statistics at one place in the tree.
struct RejectionsAtPlace {
  std::uint64_t dropped = 0;
  std::map<std::string, Verdict> subjects{};
};

/// Rejections by their place, "Module::Plan/placing".
using Rejections = std::map<std::string, RejectionsAtPlace>;

/// Returns the rejections in the tree `statistics`. Those of statistics at equal places, such as
/// those of a module that runs twice, are added. Throws std::runtime_error when a value has a wrong
/// type.
Rejections rejectionsIn(const Json::Value& statistics);

}  // namespace libvarrow::host
