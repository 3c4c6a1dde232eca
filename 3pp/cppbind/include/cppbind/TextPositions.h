// Lines and columns of a text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "cppbind/Export.h"

namespace cppbind {

/// A place in a text, as editors show it.
struct TextPosition {
  /// Begins at 1. A line ends with LF, CR LF or CR.
  std::size_t line;
  /// Begins at 1 and counts code points. A tab counts one, a byte order mark at the beginning of
  /// the text none, each byte that is not valid UTF-8 one.
  std::size_t column;
};

/// Converts offsets of bytes in a text into lines and columns. Refers to the text, which must
/// outlive it. Thread-safe.
class CPPBIND_API TextPositions {
 public:
  /// Takes O(n).
  explicit TextPositions(std::string_view text);
  /// Rejects a temporary string, which would be destroyed before the object.
  template <class Text, class = std::enable_if_t<std::is_same_v<const Text, const std::string>>>
  explicit TextPositions(Text&& text) = delete;

  /// Returns the position of the character that contains the byte at `offset`. Offsets beyond the
  /// end give the end of the text. O(1), however long the lines are.
  TextPosition at(std::size_t offset) const;

 private:
  // The beginning of a character, with its position.
  struct Mark {
    std::size_t offset;
    TextPosition position;
  };

  Mark lastMarkUpTo(std::size_t offset) const;

  std::string_view text_;
  std::vector<Mark> marks_;
};

}  // namespace cppbind
