#include "backtrace/crash_ways.h"

CrashWays systemCrashWays() {
  return {};
}
