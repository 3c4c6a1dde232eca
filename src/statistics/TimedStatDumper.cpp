#include "libvarrow/statistics/TimedStatDumper.h"

#include <Poco/ThreadPool.h>

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <exception>
#include <limits>

#include "base/FilePatience.h"
#include "base/NeverDestroyed.h"
#include "base/out_of_memory.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/file_name.h"
#include "log/standard_error.h"
#include "statistics/statistics_file.h"

namespace libvarrow {

namespace {

namespace fs = boost::filesystem;

constexpr long kStartDelayMs = 5000;
constexpr long kPeriodMs = 30000;
constexpr const char* kSwitch = "LIBVARROW_TIMED_STAT_DUMP";

// Poco's default pool has 16 threads for all timers of the process; a host may have more runs.
Poco::ThreadPool& timerThreads() {
  static base::NeverDestroyed<Poco::ThreadPool> pool(1, std::numeric_limits<int>::max());
  return *pool;
}

// Calls an operation on a file until no other program has the file open, or the patience ends.
template <typename Operation>
void withPatience(base::FilePatience& patience, const Operation& operation) {
  while (true) {
    try {
      return operation();
    } catch (const fs::filesystem_error& error) {
      if (!patience.isWorthATry(error.code())) throw;
    }
  }
}

}  // namespace

TimedStatDumper::TimedStatDumper(StatisticsContainer* statistics, const std::string& fileName)
    : Poco::Timer(kStartDelayMs, kPeriodMs), statistics_(statistics), fileName_(fileName) {
  utility::adjustFileName(fileName_);
  if (std::getenv(kSwitch) == nullptr) return;
  try {
    start(Poco::TimerCallback<TimedStatDumper>(*this, &TimedStatDumper::onTimer), timerThreads());
  } catch (const std::exception& error) {
    // A missing timer must not end the run. The destructor still writes the file.
    LIBVARROW_LOG_WARN("no timer thread for %s (%s): only the dumper's destructor writes it",
                       fileName_.c_str(), error.what());
  }
}

TimedStatDumper::~TimedStatDumper() {
  // Stops the timer even if the variable is unset by now: a timer must not outlive its statistics.
  // Does nothing for a timer that never started.
  stop();
  dump();
}

void TimedStatDumper::onTimer(Poco::Timer&) {
  useCrashStack();
  dump();
}

void TimedStatDumper::dump() {
  try {
    replaceFile();
  } catch (const std::exception& error) {
    if (!base::isOutOfMemory(error)) throw;
    // As with a full disk, the run continues and the last complete file stays.
    logging::warnOfMemory(fileName_.c_str(), "is unchanged");
  }
}

void TimedStatDumper::replaceFile() {
  const StatisticsFile written = writeStatisticsFile(
      fileName_ + ".writing", statistics_->toJsonValue4Bind(), OldFile::Removed);
  if (!written.isWhole) {
    // A reader never sees half a file; the last complete one is better than none.
    boost::system::error_code ignored;
    fs::remove(written.name, ignored);
    LIBVARROW_LOG_WARN("%s could not be written completely; %s is unchanged", written.name.c_str(),
                       fileName_.c_str());
    return;
  }
  // Both paths exist before the old file is removed: after that, no allocation may fail.
  const fs::path temporary(written.name);
  const fs::path target(fileName_);
  base::FilePatience patience;
  withPatience(patience, [&] {
    if (fs::exists(target)) fs::remove(target);
  });
  withPatience(patience, [&] {
    if (fs::exists(temporary)) fs::rename(temporary, target);
  });
}

}  // namespace libvarrow
