// Text in the encoding of the system and in UTF-8. JSON and the names in it are UTF-8 everywhere;
// paths, logs and errors have the encoding of the system, which is UTF-8 except on Windows.
#pragma once

#include <string>

namespace libvarrow::base {

/// Returns systemCodePageName(), determined once per process.
const std::string& codePageName();

/// Returns whether `text` is the same in both encodings: all of it is ASCII, or the system's
/// encoding is UTF-8 and the text is valid. The converter would return it at fifty times the cost
/// of this check.
bool isSameInUtf8(const std::string& text);

///@{
/// Converts like utility::fromUtf8() and utility::toUtf8(), which describe the results.
std::string fromUtf8(const std::string& utf8);
std::string toUtf8(const std::string& text);
///@}

/// Returns UTF-8 in the system's encoding, without the characters that it lacks. A text that is not
/// valid UTF-8 has that encoding already, such as the text of a host's exception, and is returned
/// unchanged.
std::string systemText(std::string text);

/// Returns a text of the system, such as a path, in UTF-8. Where the system's encoding is UTF-8,
/// bytes that are not valid stay.
std::string utf8OfSystem(std::string text);

/// Returns a text in UTF-8 that may be UTF-8 already: valid UTF-8 is returned unchanged.
std::string utf8Text(std::string text);

/// Returns a path, or a part of it, that a text of JSON names; see utility::pathFromUtf8().
std::string systemName(std::string name);

}  // namespace libvarrow::base
