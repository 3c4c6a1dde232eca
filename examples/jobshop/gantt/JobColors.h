// A colour for each job that stays apart from those of the others.
#pragma once

#include <cstddef>
#include <string>

namespace jobshop {

struct JobColor {
  std::string fill;  ///< "#rrggbb"
  std::string text;  ///< black or white, whichever is read more easily on `fill`
};

JobColor colorOfJob(std::size_t job);

}  // namespace jobshop
