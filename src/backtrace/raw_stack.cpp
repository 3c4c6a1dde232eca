#include "backtrace/raw_stack.h"

#include <array>
#include <atomic>
#include <charconv>

#include "backtrace/crash_signals.h"
#include "backtrace/crash_system.h"

namespace libvarrow::crash {

namespace {

enum class State { NotPrinted, Printing, Printed };
std::atomic<State> state{State::NotPrinted};
std::atomic<long> printingThread{0};

void printNumber(long number) {
  std::array<char, 24> digits{};
  std::to_chars(digits.data(), digits.data() + digits.size() - 1, number);
  printText(digits.data());
}

void print(int sig, const Stack& stack, const void* place) {
  printText("Signal ");
  printNumber(sig);
  if (const CrashSignal* signal = crashSignal(sig)) {
    printText(" (");
    printText(signal->name);
    printText(")");
  }
  printText(" in thread ");
  printNumber(threadNumber());
  printText(", call stack:\n");
  printFrames(stack);
  if (stack.isWhole) return;
  printText("the call stack cannot be read any further\n");
  printRegisters(place);
}

}  // namespace

void printRawStackOnce(int sig, const Stack& stack, const void* place) {
  State expected = State::NotPrinted;
  if (state.compare_exchange_strong(expected, State::Printing)) {
    printingThread = threadNumber();
    print(sig, stack, place);
    state = State::Printed;
  }
  // The printing thread comes here again when it faults meanwhile, and must not wait for itself.
  while (state != State::Printed && printingThread != threadNumber()) sleepBriefly();
}

void skipRawStack() {
  state = State::Printed;
}

}  // namespace libvarrow::crash
