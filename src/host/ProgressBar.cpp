#include "host/ProgressBar.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <utility>
#include <vector>

#include "host/json_string.h"
#include "host/one_line.h"
#include "host/system.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/statistics/ProgressStatistics.h"

namespace libvarrow::host {

namespace {

constexpr std::uint64_t kWhole = 100;
constexpr std::chrono::milliseconds kRedraw(200);

using Progress = std::pair<std::string, std::uint64_t>;

std::vector<Progress> unfinished(const StatisticsContainer& statistics) {
  std::vector<Progress> list;
  statistics.visit([&](const std::string& name, const CommonStatistics& statistic) {
    std::uint64_t percent = kWhole;
    if (const auto* progress = dynamic_cast<const ProgressStatistics*>(&statistic)) {
      percent = progress->getProcessPercent();
    } else if (const auto* steps = dynamic_cast<const SimpleProgressStatistics*>(&statistic)) {
      if (steps->total() != 0) percent = steps->getProcessPercent();
    }
    if (percent < kWhole) list.emplace_back(name, percent);
  });
  return list;
}

}  // namespace

std::string progressLine(const std::string& step, const StatisticsContainer& statistics,
                         std::size_t width) {
  constexpr std::size_t kNarrow = 60;
  const std::size_t barLength = width < kNarrow ? 10 : 20;
  const std::vector<Progress> list = unfinished(statistics);
  if (list.empty()) return std::string();
  // The numbers first: narrow terminals cut the names.
  std::string line;
  for (const auto& [name, percent] : list) {
    const std::size_t filled = barLength * percent / kWhole;
    line += std::to_string(percent) + " % [" + std::string(filled, '#') +
            std::string(barLength - filled, '.') + "] " + oneLine(programText(name)) + "  ";
  }
  line += oneLine(programText(step));
  cutText(line, width);
  return line;
}

ProgressBar::ProgressBar(const StatisticsContainer& statistics, const RunSession& session,
                         std::size_t columns)
    : statistics_(statistics), session_(session), columns_(columns) {
  if (columns <= 1) return;
  try {
    thread_ = std::thread([this] { work(); });
  } catch (const std::exception&) {
    // The run matters more than its bar.
  }
}

// Erases with blanks, which also works on terminals without escape sequences.
ProgressBar::~ProgressBar() {
  if (!thread_.joinable()) return;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    isEnded_ = true;
  }
  ended_.notify_one();
  thread_.join();
  if (drawn_ > 0) system::writeError('\r' + std::string(drawn_, ' ') + '\r');
}

void ProgressBar::work() {
  useCrashStack();
  std::unique_lock<std::mutex> lock(mutex_);
  while (!ended_.wait_for(lock, kRedraw, [this] { return isEnded_; })) {
    try {
      draw();
    } catch (const std::exception&) {
      return;  // likewise
    }
  }
}

void ProgressBar::draw() {
  // A line that reaches the last column would wrap and could not be overwritten.
  std::string line = progressLine(session_.currentStep(), statistics_, columns_ - 1);
  const std::size_t length = line.size();
  if (length == 0 && drawn_ == 0) return;
  line.resize(std::max(length, drawn_), ' ');
  system::writeError('\r' + line);
  drawn_ = length;
}

}  // namespace libvarrow::host
