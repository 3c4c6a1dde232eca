// Texts and paths as strings of JSON.
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

}  // namespace libvarrow::host
