// The functions of the system that a host needs: signals, standard streams, terminal, locks, and
// figures of the process and the machine.
#pragma once

#include <boost/filesystem/path.hpp>
#include <boost/system/error_code.hpp>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace libvarrow::host::system {

/// RAII guard: turns the signals that ask a run to end into a request. A signal that was ignored
/// stays ignored. A second signal ends the process at once. One object at a time.
class EndSignals {
 public:
  EndSignals();
  EndSignals(const EndSignals&) = delete;
  EndSignals& operator=(const EndSignals&) = delete;
  /// Restores the handlers of before.
  ~EndSignals();

  /// Returns the signal that was received, 0 for none. Thread-safe.
  static int received() noexcept;
};

/// Returns "SIGINT" for the number of that signal.
const char* signalName(int signal);

/// Flushes buffers and ends the process by `signal`, as if the signal were not handled.
[[noreturn]] void endBy(int signal);

/// Opens standard input, output and error on the null device if they are closed, so that no other
/// file gets their descriptors. On Windows also sets the encoding of a console to that of the
/// process, until it ends.
void openStandardStreams();

///@{
/// Returns the text of a value of errno, or of an error of the file library, in English in every
/// locale, like the other messages. On Windows an error without a value of errno has the words of
/// the system.
const char* errorText(int error);
std::string errorText(const boost::system::error_code& error);
///@}

/// RAII guard: keeps standard output for results and redirects its descriptor, because modules and
/// the library print there. Initially redirects it to the null device. One object at a time.
class ResultStream {
 public:
  ResultStream();
  ResultStream(const ResultStream&) = delete;
  ResultStream& operator=(const ResultStream&) = delete;
  /// Redirects the descriptor to the null device.
  ~ResultStream();

  /// Redirects the descriptor to standard error.
  void printToStandardError();
  /// Redirects it to the end of the file at `path`. Throws std::runtime_error.
  void printTo(const boost::filesystem::path& path);
  /// Writes `text` to the real standard output. Throws std::runtime_error with the system's reason.
  void write(const std::string& text);

 private:
  int results_ = -1;
};

/// Writes `text` to standard error, in one piece as far as the system allows it.
void writeError(const std::string& text) noexcept;

/// Returns the width of the terminal at standard error; 0 without a terminal.
std::size_t terminalColumns();

/// Makes `link` refer to the folder `name` beside it, atomically. It is a symbolic link, or a text
/// file on systems where usual users cannot make links. Ignores errors.
void pointAt(const boost::filesystem::path& link, const std::string& name);

/// The resources that the process has used so far.
struct ProcessUse {
  std::chrono::microseconds processorTime{};  ///< of all threads
  std::uint64_t peakMemory = 0;               ///< bytes; 0: unknown
};
ProcessUse processUse() noexcept;

/// Returns the number of the process.
std::uint64_t processId() noexcept;

/// The machine, as its system describes it.
struct Machine {
  std::string name;
  std::string system;
  std::uint64_t memory = 0;  ///< bytes; 0: unknown
};
Machine machine();

///@{
/// Returns the build id that the linker wrote into the program, or into the library that contains
/// `address`, in hexadecimal digits; empty without one. Two files of the same id have the same
/// contents, except debug information.
std::string programBuildId();
std::string buildId(const void* address);
///@}

/// Lock of a file, which is created if it is missing. Released when the object or the process ends.
class FileLock {
 public:
  /// Opens and locks the file. Throws std::runtime_error when it cannot be opened.
  explicit FileLock(const boost::filesystem::path& file);
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;
  ~FileLock();

  /// Returns false when another object, in this process or another one, has the lock.
  bool isHeld() const;

 private:
  std::intptr_t file_;
  bool isHeld_ = false;
};

}  // namespace libvarrow::host::system
