#include "libvarrow/utility/UTFConverter.h"

#include <utility>

#include "base/system_text.h"

namespace libvarrow::utility {

const std::string& codePageName() {
  return base::codePageName();
}

std::string fromUtf8(const std::string& utf8) {
  return base::fromUtf8(utf8);
}

std::string fromUtf8(std::string&& utf8) {
  return base::isSameInUtf8(utf8) ? std::move(utf8) : base::fromUtf8(utf8);
}

std::string toUtf8(const std::string& text) {
  return base::toUtf8(text);
}

std::string pathFromUtf8(const std::string& utf8) {
  return base::systemName(utf8);
}

}  // namespace libvarrow::utility
