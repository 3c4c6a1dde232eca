// Conversion of text between the program's narrow encoding and UTF-8.
#pragma once

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow::utility {

/// Returns the name of the encoding of text in memory: "CP" and the number of the system's ANSI
/// code page on Windows ("CP936"), "UTF-8" elsewhere. Determined once per process.
LIBVARROW_API const std::string& codePageName();

///@{
/// Returns `utf8` in the program's narrow encoding. Leaves out bytes that are not valid UTF-8 and
/// characters that the encoding lacks. Copies or moves valid text where both are UTF-8.
/// Keeps byte sequences for numbers above U+10FFFF where both are UTF-8.
LIBVARROW_API std::string fromUtf8(const std::string& utf8);
LIBVARROW_API std::string fromUtf8(std::string&& utf8);
///@}
/// Returns `text`, in the program's narrow encoding, as UTF-8. Leaves out bytes that are not valid
/// in that encoding. Copies valid text where both are UTF-8.
LIBVARROW_API std::string toUtf8(const std::string& text);

/// Returns a path, or a part of one, that a text of JSON names, in the program's narrow encoding.
/// Unlike fromUtf8(), never leaves out a character, so that two names never become one. A text with
/// a character that the encoding lacks is returned unchanged where its bytes are characters of the
/// encoding, otherwise with "%E6" in place of each byte that is not ASCII. A text that is not UTF-8
/// is returned unchanged. For the name of an input file, InputFile does the same.
LIBVARROW_API std::string pathFromUtf8(const std::string& utf8);

}  // namespace libvarrow::utility
