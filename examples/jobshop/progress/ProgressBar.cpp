#include "progress/ProgressBar.h"

#include <algorithm>
#include <iostream>
#include <utility>

namespace jobshop {

namespace {

constexpr std::size_t kBarLength = 30;
constexpr std::chrono::milliseconds kRedraw(100);

}  // namespace

ProgressBar::ProgressBar(std::string label, std::uint64_t total, std::size_t columns)
    : label_(std::move(label)), total_(total), columns_(columns) {}

// Erases with blanks, which also works on terminals without escape sequences.
ProgressBar::~ProgressBar() {
  if (drawn_ > 0) std::cerr << '\r' << std::string(drawn_, ' ') << '\r' << std::flush;
}

void ProgressBar::update(std::uint64_t done, Time bestMakespan) {
  if (columns_ == 0) return;
  const Clock::time_point now = Clock::now();
  if (now - last_ < kRedraw) return;
  last_ = now;
  std::string line = lineText(done, bestMakespan);
  const std::size_t length = line.size();
  line.resize(std::max(length, drawn_), ' ');
  std::cerr << '\r' << line << std::flush;
  drawn_ = length;
}

std::string ProgressBar::lineText(std::uint64_t done, Time bestMakespan) const {
  const auto filled = static_cast<std::size_t>(kBarLength * done / total_);
  std::string line = label_ + " [" + std::string(filled, '#') +
                     std::string(kBarLength - filled, '.') + "] " +
                     std::to_string(100 * done / total_) + " %, try " + std::to_string(done) +
                     " of " + std::to_string(total_) + ", best " + std::to_string(bestMakespan);
  // A line that reaches the last column would wrap and could not be overwritten.
  line.resize(std::min(line.size(), columns_ - 1));
  return line;
}

}  // namespace jobshop
