// The name that a misspelt one probably means.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace libvarrow::base {

/// Distance of names that hardly mean the same.
constexpr std::size_t kFarNames = static_cast<std::size_t>(-1);

/// Returns the number of letters to insert, to remove, to replace or to swap with the next one that
/// turn `left` into `right`, ignoring the case of ASCII letters; kFarNames when it is more than a
/// third of the longer name. O(n) for names of n bytes.
std::size_t nameDistance(std::string_view left, std::string_view right);

/// Returns the end of an error about an unknown name, "; did you mean "NAME"?"; an empty text for
/// an empty `name`.
std::string suggestion(std::string_view name);

/// Keeps the nearest of several names.
class NearestName {
 public:
  /// Searches a name near `searched`, which must outlive this object.
  explicit NearestName(std::string_view searched) : searched_(searched) {}

  /// Considers `candidate`, which must remain valid. Of equally near names the first counts.
  void consider(std::string_view candidate) {
    const std::size_t distance = nameDistance(searched_, candidate);
    if (distance >= distance_) return;
    distance_ = distance;
    nearest_ = candidate;
  }
  /// Returns the nearest name; empty if there is none.
  std::string_view name() const { return nearest_; }

 private:
  std::string_view searched_;
  std::string_view nearest_;
  std::size_t distance_ = kFarNames;
};

}  // namespace libvarrow::base
