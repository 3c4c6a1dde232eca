// A statistics file that can be watched while a program runs.
#pragma once

#include <Poco/Timer.h>

#include <boost/noncopyable.hpp>
#include <string>

#include "libvarrow/Export.h"
#include "libvarrow/statistics/StatisticsContainer.h"

namespace libvarrow {

/// Writer of one container's statistics file. Its destructor writes the file a last time.
///
/// When the environment variable LIBVARROW_TIMED_STAT_DUMP is set, to any value, a timer thread
/// also writes the file 5 seconds after construction and then every 30 seconds. Each write creates
/// "FILE.writing" and renames it, so that readers never see half a file. An older file or symbolic
/// link of that name is removed before. Without the variable, only the last write happens, and a
/// process that crashes or is killed writes nothing.
///
/// A file that cannot be written completely (full disk or out of memory, for example) is logged at
/// WARN and removed; the last complete file stays. A file that cannot be opened aborts with a
/// back-trace, also on the timer thread. A target that cannot be replaced (a directory that is not
/// empty, for example) throws boost::filesystem::filesystem_error: the timer thread ignores it and
/// the next write tries again; in the destructor it ends the process. In both cases an exception
/// that is passing through the destructor is lost: create the dumper outside the try block. Two
/// dumpers must not share a file name. Names within 8 bytes of the limits of adjustFileName
/// (utility/file_name.h) lose the end of their temporary names, so two of them may share that.
///
/// Every running timer occupies one thread of a growing pool that the dumpers share. When the timer
/// gets no thread, the constructor logs at WARN, and only the destructor writes the file.
class LIBVARROW_API TimedStatDumper : public Poco::Timer, private boost::noncopyable {
 public:
  /// Starts the timer if the variable is set. `statistics` is not owned and must outlive the
  /// dumper. A relative `fileName` is resolved from the current directory, now.
  TimedStatDumper(StatisticsContainer* statistics, const std::string& fileName);
  /// Waits for a running write, then writes the final state.
  ~TimedStatDumper() override;

 private:
  void onTimer(Poco::Timer& timer);
  void dump();
  void replaceFile();

  StatisticsContainer* statistics_;
  std::string fileName_;
};

}  // namespace libvarrow
