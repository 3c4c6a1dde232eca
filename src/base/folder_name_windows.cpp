#include <algorithm>
#include <string_view>
#include <utility>

#include "base/folder_name.h"
#include "base/system_text.h"

namespace libvarrow::base {

std::string folderName(std::string name) {
  // Before the conversion: a byte of a character of two bytes may look like one of these.
  constexpr std::string_view kForbidden = "<>:\"|?*\\";
  std::replace_if(
      name.begin(), name.end(),
      [=](unsigned char c) { return c < ' ' || kForbidden.find(char(c)) != kForbidden.npos; }, '_');
  return systemName(std::move(name));
}

}  // namespace libvarrow::base
