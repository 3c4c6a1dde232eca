// The place of a CPU profile around each module of a chain.
#pragma once

#include <boost/thread/mutex.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Profiles its scope into a file. No profiler is wired in: nothing is recorded or written.
class LIBVARROW_API CPUProfiler {
 public:
  /// `path`: the file of the profile.
  explicit CPUProfiler(std::string path);
  /// A copy records nothing either.
  CPUProfiler(const CPUProfiler&);
  /// Changes nothing.
  CPUProfiler& operator=(const CPUProfiler&);
  virtual ~CPUProfiler();

 protected:
  /// For a profiler behind this class, so that only one runs at a time: guards running_profiler.
  static boost::mutex mutex;
  /// Null: none runs.
  static CPUProfiler* running_profiler;
};

}  // namespace libvarrow
