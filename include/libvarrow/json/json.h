// Conversion of JSON and UTF-8 text between memory and files.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Returns the JSON value in the file at `path`, with its comments, which Json2Str writes again.
/// Throws std::runtime_error with the path and the parser's messages, and logs at ERROR, when the
/// file cannot be read or parsed; a missing file reads as empty text. (cppbind::readJsonFile
/// distinguishes the two. It drops comments, too; thousands of them on one line take quadratic time
/// here.)
LIBVARROW_API Json::Value File2Json(const boost::filesystem::path& path);

/// Returns the JSON value in `text`, as File2Json does.
LIBVARROW_API Json::Value Str2Json(const std::string& text);

/// Returns `value` as text, each member on a separate line, indented by one space a level.
LIBVARROW_API std::string Json2Str(const Json::Value& value);

namespace utility {

/// Returns the UTF-8 text file at `path` in the program's narrow encoding. Throws
/// std::runtime_error, and logs at ERROR, when the file does not exist or cannot be read.
LIBVARROW_API std::string readUTF8File(std::string path);

/// Writes `text` (in the program's narrow encoding) as UTF-8. A relative `path` is relative to the
/// directory that was current when the process started (paths of statistics files: to the current
/// one). Creates missing directories; throws std::runtime_error, and logs at ERROR, when one cannot
/// be created. A file that cannot be opened or written is not reported.
LIBVARROW_API void writeFileForUTF8(const std::string& path, const std::string& text);
/// The same for a literal, which is text and not a JSON string.
LIBVARROW_API void writeFileForUTF8(const std::string& path, const char* text);

/// Writes `value` on one line.
LIBVARROW_API void writeFileForUTF8(const std::string& path, const Json::Value& value);

}  // namespace utility

}  // namespace libvarrow
