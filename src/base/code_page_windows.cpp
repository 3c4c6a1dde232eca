#include <windows.h>

#include "base/code_page.h"

namespace libvarrow::base {

std::string systemCodePageName() {
  CPINFOEXA info;
  const UINT number = GetCPInfoExA(CP_ACP, 0, &info) ? info.CodePage : GetACP();
  return "CP" + std::to_string(number);
}

}  // namespace libvarrow::base
