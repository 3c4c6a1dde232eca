// Indentation of nested text dumps.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// A sequence of equal fill characters. A value.
///
///     out << indent << "machine\n" << indent.addIndent(2) << "slot\n";
class LIBVARROW_API StringIndent {
 public:
  /// Makes an indent of `count` times `fill`.
  explicit StringIndent(std::size_t count = 0, char fill = ' ') : text_(count, fill), fill_(fill) {}

  /// Returns a copy that is `count` fill characters longer.
  StringIndent addIndent(std::size_t count) const;

  /// Writes the fill characters.
  LIBVARROW_API friend std::ostream& operator<<(std::ostream& out, const StringIndent& indent);

 private:
  std::string text_;
  char fill_;
};

}  // namespace libvarrow
