#include "host/json_string.h"

#include <algorithm>

#include "base/system_text.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

// Without a conversion, bytes that are not UTF-8 remain visible.
bool isUtf8System() {
  static const bool isUtf8 = utility::codePageName() == "UTF-8";
  return isUtf8;
}

}  // namespace

Json::Value jsonString(const std::string& text) {
  return base::utf8OfSystem(text);
}

Json::Value jsonString(const boost::filesystem::path& path) {
  return jsonString(path.generic_string());
}

std::string programText(const std::string& utf8) {
  return isUtf8System() ? utf8 : utility::fromUtf8(utf8);
}

std::string stepOfPath(std::string path) {
  if (isUtf8System()) return path;
  std::string step;
  for (std::size_t begin = 0; begin <= path.size();) {
    const std::size_t end = std::min(path.find('/', begin), path.size());
    step += (begin == 0 ? "" : "/") + base::utf8Text(path.substr(begin, end - begin));
    begin = end + 1;
  }
  return step;
}

}  // namespace libvarrow::host
