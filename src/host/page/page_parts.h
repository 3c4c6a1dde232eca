// The page of a run without the data, as the build embeds it.
#pragma once

#include <string_view>

namespace libvarrow::host {

extern const std::string_view kPageBeforeData;
extern const std::string_view kPageAfterData;

}  // namespace libvarrow::host
