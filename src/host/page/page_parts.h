// The page of a run without the data, as the build embeds it.
#pragma once

#include <initializer_list>
#include <string_view>

namespace libvarrow::host {

/// Pieces that follow one another: compilers limit the length of a string literal.
using PagePart = std::initializer_list<std::string_view>;

extern const PagePart kPageBeforeData;
extern const PagePart kPageAfterData;

}  // namespace libvarrow::host
