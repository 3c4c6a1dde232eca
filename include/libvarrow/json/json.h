// JSON and UTF-8 text between memory and files.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// The JSON value in the file at `path`, with its comments, which Json2Str writes again. A file
/// that cannot be read or parsed is logged at ERROR and throws std::runtime_error with the path and
/// the parser's messages; one that is missing reads as empty text. (cppbind::readJsonFile tells the
/// two apart, and drops comments: thousands of them on one line take time by their square here.)
LIBVARROW_API Json::Value File2Json(const boost::filesystem::path& path);

/// As File2Json, from text.
LIBVARROW_API Json::Value Str2Json(const std::string& text);

/// `value` as text, members on lines of their own, indented by one space a level.
LIBVARROW_API std::string Json2Str(const Json::Value& value);

namespace utility {

/// The UTF-8 text file at `path`, in the program's narrow encoding. A file that is not there or
/// cannot be read is logged at ERROR and throws std::runtime_error.
LIBVARROW_API std::string readUTF8File(std::string path);

/// Writes `text` (in the program's narrow encoding) as UTF-8. A relative `path` is taken from the
/// directory that was current when the process started (those of statistics files from the current
/// one); missing directories are made, and one that cannot be is logged at ERROR and throws
/// std::runtime_error. A file that cannot be opened or written fails silently.
LIBVARROW_API void writeFileForUTF8(const std::string& path, const std::string& text);
/// A literal is text, not a JSON string.
LIBVARROW_API void writeFileForUTF8(const std::string& path, const char* text);

/// Writes `value` on one line.
LIBVARROW_API void writeFileForUTF8(const std::string& path, const Json::Value& value);

}  // namespace utility

}  // namespace libvarrow
