// The signals that the crash handler reports.
#pragma once

#include <array>
#include <csignal>

namespace libvarrow::crash {

struct CrashSignal {
  int number;
  const char* name;
  bool reportsCalls;  ///< the system sends it for a call of an address without code
};

/// Signals that a system lacks are inside #ifdef SIGNAME.
constexpr std::array kCrashSignals = {
    CrashSignal{SIGSEGV, "SIGSEGV", true},
    CrashSignal{SIGABRT, "SIGABRT", false},
};

/// Returns the row of a signal; null when a host calls the handler for another signal.
constexpr const CrashSignal* crashSignal(int number) {
  for (const CrashSignal& signal : kCrashSignals) {
    if (signal.number == number) return &signal;
  }
  return nullptr;
}

}  // namespace libvarrow::crash
