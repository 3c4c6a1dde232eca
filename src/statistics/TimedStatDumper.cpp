#include "libvarrow/statistics/TimedStatDumper.h"

#include <boost/filesystem/operations.hpp>
#include <cstdlib>

#include "libvarrow/utility/file_name.h"

namespace libvarrow {

namespace {

constexpr long kStartDelayMs = 5000;
constexpr long kPeriodMs = 30000;
constexpr const char* kSwitch = "LIBVARROW_TIMED_STAT_DUMP";

}  // namespace

TimedStatDumper::TimedStatDumper(StatisticsContainer* statistics, const std::string& fileName)
    : Poco::Timer(kStartDelayMs, kPeriodMs), statistics_(statistics), fileName_(fileName) {
  utility::adjustFileName(fileName_);
  if (std::getenv(kSwitch) == nullptr) return;
  start(Poco::TimerCallback<TimedStatDumper>(*this, &TimedStatDumper::onTimer));
}

TimedStatDumper::~TimedStatDumper() {
  // Also when the variable has been unset since: a timer must not outlive what it writes. One that
  // never started has nothing to stop.
  stop();
  dump();
}

void TimedStatDumper::onTimer(Poco::Timer&) {
  dump();
}

void TimedStatDumper::dump() {
  namespace fs = boost::filesystem;
  const std::string written = statistics_->dumpToFile(fileName_ + ".writing");
  if (fs::exists(fileName_)) fs::remove(fileName_);
  if (fs::exists(written)) fs::rename(written, fileName_);
}

}  // namespace libvarrow
