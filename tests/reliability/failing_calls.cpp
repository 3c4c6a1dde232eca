#include "reliability/failing_calls.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

extern "C" {
void* __libc_malloc(std::size_t size);                     // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* memory, std::size_t size);      // NOLINT(bugprone-reserved-identifier)
}

namespace fault_injection {

namespace {

std::atomic<const char*> failingKind{nullptr};
std::atomic<unsigned long> calls{0};
unsigned long failingCall = 0;

void say(const char* text) {
  if (::syscall(SYS_write, STDERR_FILENO, text, std::strlen(text)) < 0) std::abort();
}

bool fails(const char* kind, const char* path, int error) {
  const char* wanted = failingKind;
  if (wanted == nullptr || std::strcmp(kind, wanted) != 0 || ++calls != failingCall) return false;
  failingKind = nullptr;
  for (const char* part : {"fault: ", kind, " ", path, "\n"}) say(part);
  failingKind = wanted;
  errno = error;
  return true;
}

bool fails(const char* kind, int file, int error) {
  if (failingKind == nullptr || file == STDERR_FILENO) return false;
  std::array<char, 32> link;
  std::snprintf(link.data(), link.size(), "/proc/self/fd/%d", file);
  std::array<char, 4096> path{};
  if (::readlink(link.data(), path.data(), path.size() - 1) < 0) return false;
  return fails(kind, path.data(), error);
}

template <class Function>
Function* real(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

}  // namespace

void start(const std::string& kind, unsigned long nth) {
  static const std::string kept = kind;
  failingCall = nth;
  failingKind = kept.c_str();
}

unsigned long stop() {
  failingKind = nullptr;
  return calls;
}

}  // namespace fault_injection

using fault_injection::fails;
using fault_injection::real;

extern "C" {

void* malloc(std::size_t size) {
  return fails("memory", "", ENOMEM) ? nullptr : __libc_malloc(size);
}
void* calloc(std::size_t count, std::size_t size) {
  return fails("memory", "", ENOMEM) ? nullptr : __libc_calloc(count, size);
}
void* realloc(void* memory, std::size_t size) {
  return fails("memory", "", ENOMEM) ? nullptr : __libc_realloc(memory, size);
}

std::FILE* fopen(const char* path, const char* mode) {
  static auto* const next = real<decltype(fopen)>("fopen");
  return fails("open", path, EIO) ? nullptr : next(path, mode);
}
std::FILE* fopen64(const char* path, const char* mode) {
  static auto* const next = real<decltype(fopen64)>("fopen64");
  return fails("open", path, EIO) ? nullptr : next(path, mode);
}
int open(const char* path, int flags, ...) {
  static auto* const next = real<decltype(open)>("open");
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return fails("open", path, EIO) ? -1 : next(path, flags, mode);
}
ssize_t read(int file, void* buffer, std::size_t size) {
  static auto* const next = real<decltype(read)>("read");
  return fails("read", file, EIO) ? -1 : next(file, buffer, size);
}
ssize_t write(int file, const void* data, std::size_t size) {
  static auto* const next = real<decltype(write)>("write");
  return fails("write", file, ENOSPC) ? -1 : next(file, data, size);
}
ssize_t writev(int file, const iovec* parts, int count) {
  static auto* const next = real<decltype(writev)>("writev");
  return fails("write", file, ENOSPC) ? -1 : next(file, parts, count);
}
std::size_t fwrite(const void* data, std::size_t size, std::size_t count, std::FILE* file) {
  static auto* const next = real<decltype(fwrite)>("fwrite");
  return fails("write", ::fileno(file), ENOSPC) ? next(data, 1, size * count / 2, file) / size
                                                : next(data, size, count, file);
}
int fclose(std::FILE* file) {
  static auto* const next = real<decltype(fclose)>("fclose");
  const bool hasFailed = fails("close", ::fileno(file), EIO);
  const int result = next(file);
  return hasFailed ? EOF : result;
}
int rename(const char* from, const char* to) noexcept {
  static auto* const next = real<decltype(rename)>("rename");
  return fails("rename", from, EIO) ? -1 : next(from, to);
}
int mkdir(const char* path, mode_t mode) noexcept {
  static auto* const next = real<decltype(mkdir)>("mkdir");
  return fails("mkdir", path, ENOSPC) ? -1 : next(path, mode);
}
}
