#include "libvarrow/utility/UTFConverter.h"

#include <boost/locale/encoding.hpp>

#if defined(_WIN32)
#include <windows.h>
#endif

namespace libvarrow::utility {

namespace {

#if defined(_WIN32)
std::string systemCodePageName() {
  CPINFOEXA info;
  const UINT number = GetCPInfoExA(CP_ACP, 0, &info) ? info.CodePage : GetACP();
  return "CP" + std::to_string(number);
}
#else
std::string systemCodePageName() {
  return "UTF-8";
}
#endif

}  // namespace

// Never destroyed, as a host's static objects may be older.
const std::string& codePageName() {
  static const auto* const name = new std::string(systemCodePageName());
  return *name;
}

std::string fromUtf8(const std::string& utf8) {
  return boost::locale::conv::from_utf<char>(utf8, codePageName());
}

std::string toUtf8(const std::string& text) {
  return boost::locale::conv::to_utf<char>(text, codePageName());
}

}  // namespace libvarrow::utility
