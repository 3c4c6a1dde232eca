#include "base/folder_name.h"

namespace libvarrow::base {

std::string folderName(std::string name) {
  return name;
}

}  // namespace libvarrow::base
