// A span of a schedule's time.
#pragma once

#include "problem/Instance.h"

namespace jobshop {

struct Span {
  Time start = 0;
  Time end = 0;
};

}  // namespace jobshop
