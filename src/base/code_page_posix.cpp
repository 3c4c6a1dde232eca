#include "base/code_page.h"

namespace libvarrow::base {

std::string systemCodePageName() {
  return "UTF-8";
}

}  // namespace libvarrow::base
