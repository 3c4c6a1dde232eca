// The objects that the binding benchmarks read and write.
#pragma once

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>
#include <vector>

#include "cppbind/cppbind.h"

namespace bench {

/// One field of each kind.
struct Operation {
  int id = 0;
  double hours = 0;
  std::string machine;
  boost::posix_time::ptime start;
  bool isFixed = false;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("id", id);
    binder->bind("hours", hours);
    binder->bind("machine", machine);
    binder->bind("start", start);
    binder->bind("fixed", isFixed);
  }

  bool operator==(const Operation& other) const {
    return id == other.id && hours == other.hours && machine == other.machine &&
           start == other.start && isFixed == other.isFixed;
  }
};

struct Plan {
  std::vector<Operation> operations;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("operations", operations);
  }
};

/// Returns 10,000 operations, always the same.
const Plan& samplePlan();

/// The format of a plan's times in JSON.
constexpr const char* kTimeFormat = "%Y-%m-%d %H:%M:%S";

}  // namespace bench
