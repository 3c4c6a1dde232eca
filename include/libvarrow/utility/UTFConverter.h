// Text between the program's narrow encoding and UTF-8.
#pragma once

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow::utility {

/// Name of the encoding of text in memory: "CP" and the number of the system's ANSI code page on
/// Windows ("CP936"), "UTF-8" elsewhere. Found out once per process.
LIBVARROW_API const std::string& codePageName();

/// `utf8` in the program's narrow encoding. What is no UTF-8, or has no character there, is left
/// out.
LIBVARROW_API std::string fromUtf8(const std::string& utf8);
/// `text`, in the program's narrow encoding, as UTF-8. What is not valid in that is left out.
LIBVARROW_API std::string toUtf8(const std::string& text);

}  // namespace libvarrow::utility
