#include "cppbind/Fault.h"

#include <algorithm>

#include "base/nearest_name.h"
#include "cppbind/ParseErrorException.h"

namespace cppbind {

std::string Fault::what() const {
  ParseErrorException error(message);
  std::for_each(path.rbegin(), path.rend(),
                [&](const std::string& element) { error.addPathFront(element); });
  // The text of the exception ends at a NUL.
  const std::string place = error.pathText();
  return place.empty() ? message : place + ": " + message;
}

std::string Fault::text() const {
  std::string text;
  if (line > 0) text = std::to_string(line) + ":" + std::to_string(column) + ": ";
  text += severity == Severity::Error ? "error: " : "warning: ";
  text += what() + libvarrow::base::suggestion(hint);
  // Messages of the JSON parser have several lines, and names in a file may control a terminal.
  const auto isControl = [](unsigned char c) { return c < ' ' || c == 0x7F; };
  std::replace_if(text.begin(), text.end(), isControl, ' ');
  return text;
}

}  // namespace cppbind
