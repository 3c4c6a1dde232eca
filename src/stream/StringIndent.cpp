#include "libvarrow/stream/StringIndent.h"

#include <ostream>

namespace libvarrow {

StringIndent StringIndent::addIndent(std::size_t count) const {
  StringIndent longer = *this;
  longer.text_.append(count, fill_);
  return longer;
}

std::ostream& operator<<(std::ostream& out, const StringIndent& indent) {
  return out << indent.text_;
}

}  // namespace libvarrow
