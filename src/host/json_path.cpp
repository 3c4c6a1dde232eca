#include "host/json_path.h"

#include <algorithm>

namespace libvarrow::host {

std::string pathText(const JsonPath& path) {
  std::string text;
  for (const std::string& part : path) {
    const bool isIndex = !part.empty() && part.front() == '[';
    if (!text.empty() && !isIndex) text += '.';
    text += part;
  }
  return text;
}

bool beginsWith(const JsonPath& path, const JsonPath& beginning) {
  return beginning.size() <= path.size() &&
         std::equal(beginning.begin(), beginning.end(), path.begin());
}

std::string indexText(Json::ArrayIndex index) {
  std::string text = "[";
  text += std::to_string(index);
  text += ']';
  return text;
}

}  // namespace libvarrow::host
