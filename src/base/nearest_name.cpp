#include "base/nearest_name.h"

#include <algorithm>
#include <array>

namespace libvarrow::base {

namespace {

// Longer names are compared only if they are equal; hosts have no such keys.
constexpr std::size_t kMaxLength = 64;

char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

using Row = std::array<std::size_t, kMaxLength + 1>;

// Optimal string alignment: each row has the distances of one beginning of `left` to all of
// `right`.
std::size_t distanceOf(std::string_view left, std::string_view right) {
  std::array<Row, 3> rows;
  for (std::size_t j = 0; j <= right.size(); ++j) rows[0][j] = j;
  for (std::size_t i = 1; i <= left.size(); ++i) {
    Row& row = rows[i % 3];
    const Row& before = rows[(i + 2) % 3];
    const Row& beforeThat = rows[(i + 1) % 3];
    row[0] = i;
    for (std::size_t j = 1; j <= right.size(); ++j) {
      const char a = lowered(left[i - 1]);
      const char b = lowered(right[j - 1]);
      row[j] = std::min({before[j] + 1, row[j - 1] + 1, before[j - 1] + (a == b ? 0 : 1)});
      const bool isSwapped =
          i > 1 && j > 1 && a == lowered(right[j - 2]) && b == lowered(left[i - 2]);
      if (isSwapped) row[j] = std::min(row[j], beforeThat[j - 2] + 1);
    }
  }
  return rows[left.size() % 3][right.size()];
}

}  // namespace

std::size_t nameDistance(std::string_view left, std::string_view right) {
  const std::size_t longer = std::max(left.size(), right.size());
  const std::size_t shorter = std::min(left.size(), right.size());
  const std::size_t most = longer / 3;
  if (longer > kMaxLength || longer - shorter > most) return kFarNames;
  const std::size_t distance = distanceOf(left, right);
  return distance > most ? kFarNames : distance;
}

std::string suggestion(std::string_view name) {
  if (name.empty()) return std::string();
  return std::string("; did you mean \"").append(name).append("\"?");
}

}  // namespace libvarrow::base
