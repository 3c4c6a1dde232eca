// Reads the call stack of a broken process as far as possible.
#include <execinfo.h>
#include <pthread.h>
#include <setjmp.h>
#include <unistd.h>
#include <unwind.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <boost/config.hpp>
#include <boost/stacktrace/safe_dump_to.hpp>
#include <charconv>
#include <cstdint>

#include "backtrace/crash_signals.h"
#include "backtrace/crash_system.h"
#include "backtrace/crash_system_posix.h"

namespace libvarrow::crash {

namespace {

std::atomic<long> reader{0};  // the thread that reads possibly unreadable memory
sigjmp_buf unreadable;

void leaveReading(int) {
  if (reader == threadNumber()) ::siglongjmp(unreadable, 1);
  // A fault of another thread occurs again, under its own handler, after this handler is removed.
  while (reader != 0) sleepBriefly();
}

/// RAII guard: faults of the calling thread end in a jump to `unreadable`.
class FaultsJump {
 public:
  FaultsJump() {
    for (long none = 0; !reader.compare_exchange_weak(none, threadNumber()); none = 0) {
      sleepBriefly();
    }
    sigset_t others;
    sigfillset(&others);
    for (const int sig : {SIGSEGV, SIGBUS, SIGALRM}) sigdelset(&others, sig);
    ::pthread_sigmask(SIG_SETMASK, &others, &maskBefore_);
    const struct sigaction jump = actionOf(leaveReading);
    ::sigaction(SIGSEGV, &jump, &segvBefore_);
    ::sigaction(SIGBUS, &jump, &busBefore_);
  }
  ~FaultsJump() {
    ::sigaction(SIGBUS, &busBefore_, nullptr);
    ::sigaction(SIGSEGV, &segvBefore_, nullptr);
    ::pthread_sigmask(SIG_SETMASK, &maskBefore_, nullptr);
    reader = 0;
  }
  FaultsJump(const FaultsJump&) = delete;
  FaultsJump& operator=(const FaultsJump&) = delete;

 private:
  sigset_t maskBefore_{};
  struct sigaction segvBefore_ {};
  struct sigaction busBefore_ {};
};

// Calls `read`, which has nothing to destroy. Returns false when it met unreadable memory.
template <class Read>
bool mayRead(const Read& read) {
  const FaultsJump guard;
  // A jump is the only way out of a fault inside the unwinder.
  if (sigsetjmp(unreadable, 0) != 0) return false;
  read();
  return true;
}

template <class T>
T* pointerTo(std::uintptr_t address) {
  return reinterpret_cast<T*>(address);  // NOLINT(performance-no-int-to-ptr): from a register
}

bool isReadable(std::uintptr_t address) {
  return mayRead([&] { static_cast<void>(*pointerTo<const volatile char>(address)); });
}

struct Unwinding {
  Stack& stack;
  const void* first;  // earlier frames belong to the unwinding itself
};

_Unwind_Reason_Code addFrame(_Unwind_Context* context, void* argument) {
  auto& [stack, first] = *static_cast<Unwinding*>(argument);
  void* const address = pointerTo<void>(_Unwind_GetIP(context));
  if (stack.count == 0 && address != first) return _URC_NO_REASON;
  if (address == nullptr || stack.count + 1 == stack.frames.size()) return _URC_END_OF_STACK;
  stack.frames[stack.count++] = address;
  return _URC_NO_REASON;
}

void printAddress(std::uintptr_t address) {
  std::array<char, 20> text{"0x"};
  std::to_chars(text.data() + 2, text.data() + text.size() - 1, address, 16);
  printText(text.data());
}

void printRegister(const char* name, std::uintptr_t value) {
  printText(name);
  printText(" ");
  printAddress(value);
  printText("\n");
}

#if defined(__linux__) && defined(__x86_64__)

constexpr std::array<const char*, 17> kRegisters = {"r8",  "r9",  "r10", "r11", "r12", "r13",
                                                    "r14", "r15", "rdi", "rsi", "rbp", "rbx",
                                                    "rdx", "rax", "rcx", "rsp", "rip"};

void printContext(const ucontext_t& place) {
  for (std::size_t i = 0; i < kRegisters.size(); ++i) {
    printRegister(kRegisters[i], static_cast<std::uintptr_t>(place.uc_mcontext.gregs[i]));
  }
}

std::uintptr_t programCounter(const ucontext_t& place) {
  return static_cast<std::uintptr_t>(place.uc_mcontext.gregs[REG_RIP]);
}

bool undoCall(ucontext_t& place) {
  greg_t& stackPointer = place.uc_mcontext.gregs[REG_RSP];
  greg_t returnAddress = 0;
  const auto* top = pointerTo<const volatile greg_t>(static_cast<std::uintptr_t>(stackPointer));
  if (!mayRead([&] { returnAddress = *top; })) return false;
  const greg_t call = returnAddress - 1;  // its last byte, which serves as well as its first
  if (!isReadable(static_cast<std::uintptr_t>(call))) return false;
  place.uc_mcontext.gregs[REG_RIP] = call;
  stackPointer += static_cast<greg_t>(sizeof returnAddress);
  return true;
}

#elif defined(__linux__) && defined(__aarch64__)

void printContext(const ucontext_t& place) {
  std::array<char, 4> name{"x"};
  for (std::size_t i = 0; i < 31; ++i) {
    *std::to_chars(name.data() + 1, name.data() + 3, i).ptr = '\0';
    printRegister(name.data(), place.uc_mcontext.regs[i]);
  }
  printRegister("sp", place.uc_mcontext.sp);
  printRegister("pc", place.uc_mcontext.pc);
}

std::uintptr_t programCounter(const ucontext_t& place) {
  return place.uc_mcontext.pc;
}

bool undoCall(ucontext_t& place) {
  constexpr int kLinkRegister = 30;
  constexpr std::uintptr_t kInstructionBytes = 4;
  const std::uintptr_t call = place.uc_mcontext.regs[kLinkRegister] - kInstructionBytes;
  if (!isReadable(call)) return false;
  place.uc_mcontext.pc = call;
  return true;
}

#else  // other systems: the stack is reported as far as it can be read

void printContext(const ucontext_t&) {}
std::uintptr_t programCounter(const ucontext_t&) {
  return 0;
}
bool undoCall(ucontext_t&) {
  return false;
}

#endif

// Returns whether the processor failed to fetch an instruction.
bool isNoCode(int sig, const siginfo_t& info, const ucontext_t& place) {
  const CrashSignal* signal = crashSignal(sig);
  return signal != nullptr && signal->reportsCalls && info.si_code > 0 &&
         reinterpret_cast<std::uintptr_t>(info.si_addr) == programCounter(place);
}

}  // namespace

bool isDeliveryOf(int sig, const siginfo_t* info, const void* place) {
  // The system puts both onto the stack of the handler, just above its frames.
  constexpr std::uintptr_t kMostBytes = 65536;
  const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
  const auto isAbove = [&](const void* object) {
    const auto address = reinterpret_cast<std::uintptr_t>(object);
    return address > here && address - here < kMostBytes;
  };
  if (!isAbove(info) || !isAbove(place)) return false;
  int signal = 0;
  return mayRead([&] { signal = info->si_signo; }) && signal == sig &&
         isReadable(reinterpret_cast<std::uintptr_t>(static_cast<const ucontext_t*>(place) + 1) -
                    1);
}

void undoCallWithoutCode(int sig, const siginfo_t& info, ucontext_t& place) {
  const std::uintptr_t address = programCounter(place);
  if (!isNoCode(sig, info, place) || !undoCall(place)) return;
  printText("no code at ");
  printAddress(address);
  printText(": the call stack begins with the call\n");
}

// Is not inlined, because the first frame is that of the caller.
BOOST_NOINLINE void readStack(Stack& stack, const void*) {
  stack.handlerFrames = kHandlerFrames;
  Unwinding unwinding{stack, __builtin_return_address(0)};
  stack.isWhole = mayRead([&] { ::_Unwind_Backtrace(addFrame, &unwinding); });
}

void printFrames(const Stack& stack) {
  if (stack.count <= stack.handlerFrames) return;
  ::backtrace_symbols_fd(stack.frames.data() + stack.handlerFrames,
                         static_cast<int>(stack.count - stack.handlerFrames), STDERR_FILENO);
}

// Is not inlined, so that readStack and safe_dump_to both count the frames from here.
BOOST_NOINLINE void writeDumpFile(const char* fileName, const void* place) {
  Stack stack;
  readStack(stack, place);
  boost::stacktrace::safe_dump_to(0, std::min(stack.count, kMaxFrames), fileName);
}

void printRegisters(const void* place) {
  if (place != nullptr) printContext(*static_cast<const ucontext_t*>(place));
}

}  // namespace libvarrow::crash
