#include "backtrace/last_line.h"

#include <algorithm>
#include <array>
#include <atomic>

#include "backtrace/crash_signals.h"
#include "backtrace/crash_system.h"
#include "libvarrow/backtrace/BackTrace.h"

namespace libvarrow {

namespace {

using Text = std::array<char, 1024>;

// Two buffers: a crash can read one while setCrashLine() writes the other.
std::array<Text, 2> lines{};
std::atomic<std::size_t> currentLine{0};

Text keptReason{};
std::atomic<bool> hasReason{false};

// Keeps a null byte at the end.
void copy(std::string_view text, Text& target) noexcept {
  const std::size_t length = std::min(text.size(), target.size() - 1);
  std::copy_n(text.data(), length, target.data());
  target[length] = '\0';
}

}  // namespace

void setCrashLine(std::string_view text) noexcept {
  const std::size_t next = 1 - currentLine.load(std::memory_order_relaxed);
  copy(text, lines[next]);
  currentLine.store(next, std::memory_order_release);
}

namespace crash {

void noteReason(std::string_view reason) noexcept {
  if (hasReason.exchange(true)) return;
  copy(reason.substr(0, reason.find('\n')), keptReason);
}

void printLastLine() noexcept {
  const Text& line = lines[currentLine.load(std::memory_order_acquire)];
  if (line[0] == '\0') return;
  printText(line.data());
  printText(": ");
  printText(keptReason[0] != '\0' ? keptReason.data() : "the process ends by a crash");
  printText("\n");
}

void endReport(int sig) noexcept {
  const CrashSignal* const signal = crashSignal(sig);
  if (signal != nullptr && !hasReason) {
    Text text{};
    constexpr std::string_view kBegin = "the process ends by ";
    copy(kBegin, text);
    const std::string_view name = signal->name;
    std::copy_n(name.data(), std::min(name.size(), text.size() - kBegin.size() - 1),
                text.data() + kBegin.size());
    noteReason(text.data());
  }
  if (sig == SIGABRT) printLastLine();
}

}  // namespace crash

}  // namespace libvarrow
