#include <windows.h>
// After <windows.h>.
#include <fcntl.h>
#include <io.h>
#include <psapi.h>
#include <sys/stat.h>

#include <array>
#include <atomic>
#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "host/system.h"

namespace libvarrow::host::system {

namespace {

namespace fs = boost::filesystem;

constexpr int kInput = 0;
constexpr int kOutput = 1;
constexpr int kError = 2;

// Console events replace the signals of other systems; the closing of the console replaces SIGHUP.
// After it the system lets the process work for about five seconds.
constexpr int kHangUp = 1;

std::atomic<int> receivedSignal{0};

bool isConsole(DWORD stream) {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(stream), &mode) != 0;
}

// The encoding of a console differs from that of programs on most systems (850 and 1252, say).
class ConsoleEncoding {
 public:
  ConsoleEncoding() {
    if (isConsole(STD_OUTPUT_HANDLE) || isConsole(STD_ERROR_HANDLE)) {
      before_ = GetConsoleOutputCP();
      SetConsoleOutputCP(GetACP());
    }
  }
  ConsoleEncoding(const ConsoleEncoding&) = delete;
  ConsoleEncoding& operator=(const ConsoleEncoding&) = delete;
  ~ConsoleEncoding() { restore(); }

  void restore() const {
    if (before_ != 0) SetConsoleOutputCP(before_);
  }

 private:
  UINT before_ = 0;
};

const ConsoleEncoding& consoleEncoding() {
  static const ConsoleEncoding encoding;
  return encoding;
}

// Ends the process without exit handlers, as signals do.
[[noreturn]] void terminate() {
  consoleEncoding().restore();
  constexpr UINT kControlC = 0xC000013A;  // the system's own status for such an end
  TerminateProcess(GetCurrentProcess(), kControlC);
  std::abort();
}

BOOL WINAPI onEvent(DWORD event) {
  const int signal = event == CTRL_C_EVENT ? SIGINT : event == CTRL_BREAK_EVENT ? SIGTERM : kHangUp;
  int none = 0;
  if (!receivedSignal.compare_exchange_strong(none, signal)) terminate();
  // The system ends the process when this thread returns from these events.
  if (signal == kHangUp) Sleep(INFINITE);
  return TRUE;
}

std::string reason() {
  return std::strerror(errno);
}

void flush() {
  std::cout << std::flush;
  std::fflush(stdout);
}

void pointStandardOutputAt(const fs::path& file, int flags) {
  flush();
  const int opened = ::_wopen(file.c_str(), flags | _O_TEXT | _O_NOINHERIT, _S_IREAD | _S_IWRITE);
  if (opened < 0) {
    throw std::runtime_error("cannot write " + file.generic_string() + ": " + reason());
  }
  ::_dup2(opened, kOutput);
  ::_close(opened);
}

bool writeAll(int descriptor, const std::string& text) noexcept {
  std::size_t done = 0;
  while (done < text.size()) {
    const int written =
        ::_write(descriptor, text.data() + done, static_cast<unsigned>(text.size() - done));
    if (written <= 0) return false;
    done += static_cast<std::size_t>(written);
  }
  return true;
}

std::chrono::microseconds timeOf(const FILETIME& time) {
  constexpr std::uint64_t kTicksOfMicrosecond = 10;
  const auto ticks = (std::uint64_t{time.dwHighDateTime} << 32U) + time.dwLowDateTime;
  return std::chrono::microseconds(ticks / kTicksOfMicrosecond);
}

// Symbol servers find a file by its time stamp and its size.
std::string buildIdOf(HMODULE library) {
  if (library == nullptr) return std::string();
  const auto* const begin = reinterpret_cast<const char*>(library);
  const auto& dos = *reinterpret_cast<const IMAGE_DOS_HEADER*>(begin);
  const auto& headers = *reinterpret_cast<const IMAGE_NT_HEADERS*>(begin + dos.e_lfanew);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%08lx%lx",
                static_cast<unsigned long>(headers.FileHeader.TimeDateStamp),
                static_cast<unsigned long>(headers.OptionalHeader.SizeOfImage));
  return text.data();
}

}  // namespace

EndSignals::EndSignals() {
  SetConsoleCtrlHandler(onEvent, TRUE);
}

EndSignals::~EndSignals() {
  SetConsoleCtrlHandler(onEvent, FALSE);
}

int EndSignals::received() noexcept {
  return receivedSignal;
}

const char* signalName(int signal) {
  return signal == SIGINT ? "Ctrl+C" : signal == SIGTERM ? "Ctrl+Break" : "the end of the console";
}

void endBy(int) {
  flush();
  terminate();
}

const char* errorText(int error) {
  return std::strerror(error);
}

std::string errorText(const boost::system::error_code& error) {
  const boost::system::error_condition condition = error.default_error_condition();
  const bool hasErrno = condition.category() == boost::system::generic_category();
  return hasErrno ? errorText(condition.value()) : error.message();
}

void openStandardStreams() {
  consoleEncoding();
  for (int descriptor = kInput; descriptor <= kError; ++descriptor) {
    if (::_get_osfhandle(descriptor) >= 0) continue;
    // Reading from it or writing to it then fails, as with a closed descriptor.
    const int opened = ::_open("NUL", descriptor == kInput ? _O_WRONLY : _O_RDONLY);
    if (opened == descriptor) continue;
    ::_dup2(opened, descriptor);  // the C library may count a closed descriptor as used
    ::_close(opened);
  }
}

ResultStream::ResultStream() {
  flush();
  results_ = ::_dup(kOutput);
  pointStandardOutputAt("NUL", _O_WRONLY);
}

ResultStream::~ResultStream() {
  if (results_ >= 0) ::_close(results_);
  try {
    pointStandardOutputAt("NUL", _O_WRONLY);
  } catch (const std::exception&) {
    ::_close(kOutput);
  }
}

void ResultStream::printToStandardError() {
  flush();
  ::_dup2(kError, kOutput);
}

void ResultStream::printTo(const fs::path& path) {
  pointStandardOutputAt(path, _O_WRONLY | _O_CREAT | _O_APPEND);
}

void ResultStream::write(const std::string& text) {
  if (!writeAll(results_, text)) {
    throw std::runtime_error("cannot write standard output: " + reason());
  }
}

void writeError(const std::string& text) noexcept {
  if (!writeAll(kError, text)) return;  // this cannot be reported
}

std::size_t terminalColumns() {
  CONSOLE_SCREEN_BUFFER_INFO info{};
  if (!GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info)) return 0;
  return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
}

void pointAt(const fs::path& link, const std::string& name) {
  boost::system::error_code ignored;
  if (fs::is_directory(link, ignored)) return;
  const fs::path made = link.parent_path() / fs::unique_path(".latest-%%%%%%%%");
  std::ofstream(made.string()) << name << '\n';
  fs::rename(made, link, ignored);
  if (ignored) fs::remove(made, ignored);
}

ProcessUse processUse() noexcept {
  FILETIME ignored{};
  FILETIME kernel{};
  FILETIME user{};
  GetProcessTimes(GetCurrentProcess(), &ignored, &ignored, &kernel, &user);
  PROCESS_MEMORY_COUNTERS memory{};
  K32GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
  return {timeOf(kernel) + timeOf(user), memory.PeakWorkingSetSize};
}

std::uint64_t processId() noexcept {
  return GetCurrentProcessId();
}

Machine machine() {
  std::array<wchar_t, 256> name{};
  auto size = static_cast<DWORD>(name.size() - 1);
  GetComputerNameExW(ComputerNamePhysicalDnsHostname, name.data(), &size);
  MEMORYSTATUSEX memory{};
  memory.dwLength = sizeof memory;
  GlobalMemoryStatusEx(&memory);
  return {fs::path(name.data()).string(), "Windows", memory.ullTotalPhys};
}

std::string programBuildId() {
  return buildIdOf(GetModuleHandleW(nullptr));
}

std::string buildId(const void* address) {
  HMODULE library = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<LPCWSTR>(address), &library);
  return buildIdOf(library);
}

// Without sharing, the system itself refuses a second opening.
FileLock::FileLock(const fs::path& file)
    : file_(reinterpret_cast<std::intptr_t>(CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                                                        0, nullptr, OPEN_ALWAYS,
                                                        FILE_ATTRIBUTE_NORMAL, nullptr))) {
  isHeld_ = reinterpret_cast<HANDLE>(file_) != INVALID_HANDLE_VALUE;
  const DWORD error = GetLastError();
  if (!isHeld_ && error != ERROR_SHARING_VIOLATION) {
    const boost::system::error_code reason(static_cast<int>(error),
                                           boost::system::system_category());
    throw std::runtime_error("cannot write " + file.generic_string() + ": " + reason.message());
  }
}

FileLock::~FileLock() {
  if (isHeld_) CloseHandle(reinterpret_cast<HANDLE>(file_));
}

bool FileLock::isHeld() const {
  return isHeld_;
}

}  // namespace libvarrow::host::system
