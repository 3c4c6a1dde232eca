// The part of a value that can be read although some of its elements cannot.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "collector.h"

namespace cppbind::detail {

/// A list or map without the elements that have faults, so that conditions on the others can be
/// checked. With a depth of 2 these are the elements of elements, and so on.
class ReadablePart {
 public:
  /// `faults` are those of reading `json`.
  ReadablePart(const Json::Value& json, const FaultGroup& faults, std::size_t depth);

  /// Returns false when the faults are not in elements, so that no part is known to be readable.
  bool exists() const { return exists_; }
  /// Returns the part.
  const Json::Value& json() const { return json_; }
  /// Adds the faults in `caught`, which are in the part, with their paths in the whole.
  void addTo(FaultGroup& faults, const CaughtFault& caught) const;

 private:
  // An element that has faults, or elements with faults.
  struct Node {
    bool isLeftOut = false;
    std::map<std::string, Node> children{};
    std::vector<std::size_t> indices{};  // of the elements that are left, if it is a list
  };

  void mark(const std::vector<std::string>& path);
  Json::Value without(const Json::Value& json, Node& node);
  void restore(std::vector<std::string>& path) const;

  std::size_t depth_;
  Node root_;
  bool exists_ = true;
  Json::Value json_;
};

}  // namespace cppbind::detail
