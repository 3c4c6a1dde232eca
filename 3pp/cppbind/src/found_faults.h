// The faults found in a text, sorted by place and counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_set>
#include <vector>

#include "collector.h"
#include "cppbind/Fault.h"
#include "cppbind/JsonPlaces.h"

namespace cppbind::detail {

/// Keeps the first faults of a text. A path has at most one error: the first
/// that is added.
class FoundFaults {
 public:
  using Path = std::vector<std::string>;

  /// Looks places up in `places`.
  explicit FoundFaults(JsonPlaces places) : places_(std::move(places)) {}

  /// Adds a fault at the value at `fault.path`, or at the key at `keyPath`, if it is not null.
  void add(Fault fault, const Path* keyPath);
  /// Adds a fault at an offset, or without a place (JsonPlaces::kNone).
  void addAt(std::size_t offset, Fault fault);
  /// Adds the faults that an exception carries, whose paths begin at the value at `path`.
  void add(const CaughtFault& caught, Path path);
  /// Adds warnings for what the text itself has: keys given twice, and text after the value.
  void addWarningsOfText();

  const JsonPlaces& places() const { return places_; }
  /// Returns the faults with their lines and columns.
  Faults result() const;

 private:
  void addOne(const CaughtFault& caught, const Path& path);
  bool isListed(std::size_t offset) const;
  bool isNew(std::size_t offset, const Path& path, const Path* keyPath);
  void list(std::size_t offset, Fault fault);

  JsonPlaces places_;
  std::multimap<std::size_t, Fault> first_;  // by offset
  std::size_t errorCount_ = 0;
  std::size_t warningCount_ = 0;
  std::unordered_set<std::uint64_t> known_;  // hashes of places and paths
};

}  // namespace cppbind::detail
