#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <signal.h>
#include <sys/auxv.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <boost/filesystem/operations.hpp>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "base/write_all_posix.h"
#include "host/system.h"

namespace libvarrow::host::system {

namespace {

namespace fs = boost::filesystem;

struct EndSignal {
  int number;
  const char* name;
};
constexpr std::array kEndSignals = {EndSignal{SIGINT, "SIGINT"}, EndSignal{SIGTERM, "SIGTERM"},
                                    EndSignal{SIGHUP, "SIGHUP"}};

std::atomic<int> receivedSignal{0};
static_assert(std::atomic<int>::is_always_lock_free, "async-signal-safe");
std::array<struct sigaction, kEndSignals.size()> actionsBefore{};

void setAction(int signal, void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_ONSTACK | SA_RESTART;
  sigemptyset(&action.sa_mask);
  ::sigaction(signal, &action, nullptr);
}

void onSignal(int signal) {
  int none = 0;
  if (receivedSignal.compare_exchange_strong(none, signal)) return;
  setAction(signal, SIG_DFL);
  ::raise(signal);  // delivered when the handler returns
}

std::string reason() {
  return errorText(errno);
}

void flush() {
  std::cout << std::flush;
  std::fflush(stdout);
}

void pointStandardOutputAt(const char* file, int flags) {
  flush();
  const int opened = ::open(file, flags | O_CLOEXEC, 0666);
  if (opened < 0) throw std::runtime_error("cannot write " + std::string(file) + ": " + reason());
  ::dup2(opened, STDOUT_FILENO);
  ::close(opened);
}

// Returns the largest resident size in kibibytes; 0 if it is unknown.
long peakOfProgram() noexcept {
  try {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
      long size = 0;
      if (word == "VmHWM:" && status >> size) return size;
    }
  } catch (const std::exception&) {
    return 0;
  }
  return 0;
}

// A program that another one started inherits the peak of that one. Reads the own peak from a file
// as long as that is the larger.
long peakMemory(const rusage& use) noexcept {
  static const long inherited = use.ru_maxrss > peakOfProgram() ? use.ru_maxrss : -1;
  return use.ru_maxrss == inherited ? peakOfProgram() : use.ru_maxrss;
}

std::chrono::microseconds timeOf(const timeval& time) {
  return std::chrono::seconds(time.tv_sec) + std::chrono::microseconds(time.tv_usec);
}

// The build id of the loaded file that contains an address.
struct BuildIdSearch {
  std::uintptr_t address;
  std::string id{};

  static int visit(dl_phdr_info* info, std::size_t, void* search) {
    return static_cast<BuildIdSearch*>(search)->readOf(*info) ? 1 : 0;
  }

  bool readOf(const dl_phdr_info& info) {
    const ElfW(Phdr)* const end = info.dlpi_phdr + info.dlpi_phnum;
    const bool isInside = std::any_of(info.dlpi_phdr, end, [&](const ElfW(Phdr) & part) {
      const std::uintptr_t begin = info.dlpi_addr + part.p_vaddr;
      return part.p_type == PT_LOAD && address >= begin && address - begin < part.p_memsz;
    });
    if (!isInside) return false;
    for (const ElfW(Phdr)* part = info.dlpi_phdr; part != end && id.empty(); ++part) {
      if (part->p_type != PT_NOTE) continue;
      const auto begin = info.dlpi_addr + part->p_vaddr;
      readNotes(reinterpret_cast<const char*>(begin), part->p_memsz);
    }
    return true;
  }

  void readNotes(const char* at, std::size_t size) {
    const auto padded = [](std::size_t length) { return (length + 3) / 4 * 4; };
    ElfW(Nhdr) note;
    while (size >= sizeof note) {
      std::memcpy(&note, at, sizeof note);
      const std::size_t name = sizeof note + padded(note.n_namesz);
      const std::size_t whole = name + padded(note.n_descsz);
      if (whole > size) return;
      const bool isGnu = note.n_namesz == 4 && std::memcmp(at + sizeof note, "GNU", 4) == 0;
      if (isGnu && note.n_type == NT_GNU_BUILD_ID) return setId(at + name, note.n_descsz);
      at += whole;
      size -= whole;
    }
  }

  void setId(const char* bytes, std::size_t count) {
    constexpr const char* kDigits = "0123456789abcdef";
    for (std::size_t i = 0; i < count; ++i) {
      const auto byte = static_cast<unsigned char>(bytes[i]);
      id += {kDigits[byte / 16], kDigits[byte % 16]};
    }
  }
};

std::string buildIdAt(std::uintptr_t address) {
  BuildIdSearch search{address};
  ::dl_iterate_phdr(BuildIdSearch::visit, &search);
  return search.id;
}

}  // namespace

EndSignals::EndSignals() {
  for (std::size_t i = 0; i < kEndSignals.size(); ++i) {
    ::sigaction(kEndSignals[i].number, nullptr, &actionsBefore[i]);
    if (actionsBefore[i].sa_handler != SIG_IGN) setAction(kEndSignals[i].number, onSignal);
  }
}

EndSignals::~EndSignals() {
  for (std::size_t i = 0; i < kEndSignals.size(); ++i) {
    ::sigaction(kEndSignals[i].number, &actionsBefore[i], nullptr);
  }
}

int EndSignals::received() noexcept {
  return receivedSignal;
}

const char* signalName(int signal) {
  for (const EndSignal& known : kEndSignals) {
    if (known.number == signal) return known.name;
  }
  return "a signal";
}

void endBy(int signal) {
  flush();
  setAction(signal, SIG_DFL);
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, signal);
  ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
  ::raise(signal);
  std::_Exit(128 + signal);  // as shells report it
}

const char* errorText(int error) {
#ifdef __GLIBC__
  const char* const text = ::strerrordesc_np(error);
  return text != nullptr ? text : "an unknown error";
#else
  return std::strerror(error);
#endif
}

std::string errorText(const boost::system::error_code& error) {
  return errorText(error.value());
}

void openStandardStreams() {
  for (int descriptor = STDIN_FILENO; descriptor <= STDERR_FILENO; ++descriptor) {
    // Reading from it or writing to it then fails, as with a closed descriptor.
    const int wrongDirection = descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY;
    if (::fcntl(descriptor, F_GETFD) < 0) ::open("/dev/null", wrongDirection);
  }
}

ResultStream::ResultStream() {
  flush();
  results_ = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  pointStandardOutputAt("/dev/null", O_WRONLY);
}

ResultStream::~ResultStream() {
  if (results_ >= 0) ::close(results_);
  try {
    pointStandardOutputAt("/dev/null", O_WRONLY);
  } catch (const std::exception&) {
    ::close(STDOUT_FILENO);
  }
}

void ResultStream::printToStandardError() {
  flush();
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

void ResultStream::printTo(const fs::path& path) {
  pointStandardOutputAt(path.c_str(), O_WRONLY | O_CREAT | O_APPEND);
}

void ResultStream::write(const std::string& text) {
  if (!base::writeAll(results_, text)) {
    throw std::runtime_error("cannot write standard output: " + reason());
  }
}

void writeError(const std::string& text) noexcept {
  if (!base::writeAll(STDERR_FILENO, text)) return;  // this cannot be reported
}

std::size_t terminalColumns() {
  constexpr std::size_t kUsual = 80;  // for terminals that do not report their width
  if (::isatty(STDERR_FILENO) == 0) return 0;
  winsize size{};
  const bool isKnown = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return isKnown ? size.ws_col : kUsual;
}

void pointAt(const fs::path& link, const std::string& name) {
  boost::system::error_code ignored;
  // A folder or a file of that name was not made by a run.
  if (fs::exists(fs::symlink_status(link, ignored)) && !fs::is_symlink(link, ignored)) return;
  const fs::path made = link.parent_path() / fs::unique_path(".latest-%%%%%%%%");
  fs::create_symlink(name, made, ignored);
  fs::rename(made, link, ignored);
  if (ignored) fs::remove(made, ignored);
}

ProcessUse processUse() noexcept {
  rusage use{};
  ::getrusage(RUSAGE_SELF, &use);
  constexpr std::uint64_t kUnit = 1024;
  return {timeOf(use.ru_utime) + timeOf(use.ru_stime),
          static_cast<std::uint64_t>(peakMemory(use)) * kUnit};
}

std::uint64_t processId() noexcept {
  return static_cast<std::uint64_t>(::getpid());
}

Machine machine() {
  utsname names{};
  ::uname(&names);
  const auto pages = static_cast<std::uint64_t>(std::max(0L, ::sysconf(_SC_PHYS_PAGES)));
  return {names.nodename, std::string(names.sysname) + ' ' + names.release + ' ' + names.machine,
          pages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE))};
}

// The table of the program's segments is in one of them.
std::string programBuildId() {
  return buildIdAt(::getauxval(AT_PHDR));
}

std::string buildId(const void* address) {
  return buildIdAt(reinterpret_cast<std::uintptr_t>(address));
}

FileLock::FileLock(const fs::path& file)
    : file_(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666)) {
  if (file_ < 0) {
    throw std::runtime_error("cannot write " + file.generic_string() + ": " + reason());
  }
  isHeld_ = ::flock(static_cast<int>(file_), LOCK_EX | LOCK_NB) == 0;
}

FileLock::~FileLock() {
  ::close(static_cast<int>(file_));
}

bool FileLock::isHeld() const {
  return isHeld_;
}

}  // namespace libvarrow::host::system
