// Times of day in the records of a run.
#pragma once

#include <chrono>
#include <string>

namespace libvarrow::host {

/// Returns the time in UTC: "2024-03-05T07:08:09.012345Z".
std::string utcText(std::chrono::system_clock::time_point time);

}  // namespace libvarrow::host
