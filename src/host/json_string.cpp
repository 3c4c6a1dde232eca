#include "host/json_string.h"

#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

Json::Value jsonString(const std::string& text) {
  // Without a conversion, bytes that are not UTF-8 remain visible in the JSON.
  static const bool isUtf8 = utility::codePageName() == "UTF-8";
  return isUtf8 ? text : utility::toUtf8(text);
}

Json::Value jsonString(const boost::filesystem::path& path) {
  return jsonString(path.generic_string());
}

}  // namespace libvarrow::host
