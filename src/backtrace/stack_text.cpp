#include "backtrace/stack_text.h"

#include <string_view>
#include <vector>

namespace libvarrow {

namespace {

// GCC gives an exported function a second name for calls within the library. The reader of a stack
// would take it for another function.
std::string withoutAliases(std::string text) {
  constexpr std::string_view kAlias = " [clone .localalias]";
  for (std::size_t at = 0; (at = text.find(kAlias, at)) != std::string::npos;) {
    text.erase(at, kAlias.size());
  }
  return text;
}

}  // namespace

// A frame that calls holds the address after its call, which may belong to the next line or even to
// the next function. The byte before it belongs to the call.
std::string stackText(const boost::stacktrace::stacktrace& stack, Innermost innermost) {
  std::vector<const void*> places;
  places.reserve(stack.size() + 1);
  for (const boost::stacktrace::frame& frame : stack) {
    const bool isExact = places.empty() && innermost == Innermost::IsInterrupted;
    places.push_back(static_cast<const char*>(frame.address()) - (isExact ? 0 : 1));
  }
  places.push_back(nullptr);  // ends a dump
  const std::size_t bytes = places.size() * sizeof(void*);
  return withoutAliases(to_string(boost::stacktrace::stacktrace::from_dump(places.data(), bytes)));
}

}  // namespace libvarrow
