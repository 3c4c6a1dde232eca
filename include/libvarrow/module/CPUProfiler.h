// The place of a CPU profile around each module of a chain.
#pragma once

#include <boost/thread/mutex.hpp>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Profiler of its scope, which writes to a file. Currently a placeholder: it records and writes
/// nothing.
class LIBVARROW_API CPUProfiler {
 public:
  /// Takes the file of the profile, `path`.
  explicit CPUProfiler(std::string path);
  /// Creates a copy, which records nothing either.
  CPUProfiler(const CPUProfiler&);
  /// Changes nothing.
  CPUProfiler& operator=(const CPUProfiler&);
  virtual ~CPUProfiler();

 protected:
  /// Guards running_profiler, so that a profiler added to this class runs only once at a time.
  static boost::mutex mutex;
  /// The running profiler; null when none runs.
  static CPUProfiler* running_profiler;
};

}  // namespace libvarrow
