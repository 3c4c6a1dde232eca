// Statistics that can be watched while a program runs.
#pragma once

#include <Poco/Timer.h>

#include <boost/noncopyable.hpp>
#include <string>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/StatisticsContainer.h"

namespace libvarrow {

/// Rewrites the file of one container while it lives, and a last time when it is destroyed.
///
/// When the environment variable LIBVARROW_TIMED_STAT_DUMP is set, to whatever value, a timer
/// thread writes the file 5 seconds after construction and then every 30 seconds. Each time it
/// writes "FILE.writing" first and renames it, so that nobody reads half a file. An older file or
/// symbolic link of that name is removed before. Without the variable only the last write happens,
/// and a process that crashes or is killed gets none.
///
/// A file that cannot be written whole (the disk is full, or memory runs out, say) is logged at
/// WARN and removed; the last whole one stays. A file that cannot be opened ends the process with a
/// back-trace, from the timer thread too. A target that cannot be replaced (a directory that is not
/// empty, say) is a boost::filesystem::filesystem_error: on the timer thread it is passed over and
/// the next write tries again, from the destructor it ends the process. Either way an exception
/// that is on its way through the destructor is lost: make the dumper outside the try block. Two
/// dumpers must not share a file name.
///
/// Every running timer has a thread, from a pool that the dumpers share and that grows. When the
/// system has no thread left, a WARN line says so, and the file is written by the destructor only.
class LIBVARROW_API TimedStatDumper : public Poco::Timer, private boost::noncopyable {
 public:
  /// `statistics` is not owned and must outlive the dumper. A relative `fileName` is taken from
  /// the current directory, now.
  TimedStatDumper(StatisticsContainer* statistics, const std::string& fileName);
  /// Waits for a write that is under way, then writes the final state.
  ~TimedStatDumper() override;

 private:
  void onTimer(Poco::Timer& timer);
  void dump();
  void replaceFile();

  StatisticsContainer* statistics_;
  std::string fileName_;
};

}  // namespace libvarrow
