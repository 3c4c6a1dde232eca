// Colours of jobs that are easy to tell apart.
#pragma once

#include <cstddef>
#include <string>

namespace jobshop {

struct JobColor {
  std::string fill;  ///< "#rrggbb"
  std::string text;  ///< dark or white, the more readable one on `fill`
};

JobColor colorOfJob(std::size_t job);

}  // namespace jobshop
