// Errors of the file library.
#pragma once

#include <boost/system/error_code.hpp>
#include <string>

namespace libvarrow::host {

/// Returns the text of an error: in English if it has a value of errno, otherwise in the words of
/// the system.
std::string errorText(const boost::system::error_code& error);

}  // namespace libvarrow::host
