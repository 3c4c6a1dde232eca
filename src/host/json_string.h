// The encodings of texts: JSON is UTF-8, other texts of the program are in that of the system.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <string>

namespace libvarrow::host {

///@{
/// Returns a text of the program, or a path, as a string of JSON, which is UTF-8 on every system.
Json::Value jsonString(const std::string& text);
Json::Value jsonString(const boost::filesystem::path& path);
///@}

/// Returns a text of JSON as a text of the program, which may be part of an error or of a path.
/// Leaves out characters that the system's encoding lacks.
std::string programText(const std::string& utf8);

/// Returns the path of a step below the dumps of a run as the step's name, which is UTF-8. Names of
/// folders that the system's encoding lacks are UTF-8 in the path, too.
std::string stepOfPath(std::string path);

}  // namespace libvarrow::host
