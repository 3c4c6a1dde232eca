// System calls and allocations of which one fails. This library is preloaded into a program.
// FAULT_KIND is memory, open, read, write, close, rename or mkdir, and FAULT_CALL the number of the
// call of that kind that fails; for 0 none fails. The failing call writes "fault: KIND PATH" to
// standard error; the end of a program without one writes "calls: N" there.
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

void say(int file, const char* text) {
  if (::syscall(SYS_write, file, text, std::strlen(text)) < 0) std::abort();
}

bool fails(const char* kind, const char* path, int error) {
  const char* wanted = failingKind;
  if (wanted == nullptr || std::strcmp(kind, wanted) != 0 || ++calls != failingCall) return false;
  failingKind = nullptr;
  for (const char* part : {"fault: ", kind, " ", path, "\n"}) say(STDERR_FILENO, part);
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

// The call that this file replaces.
template <class Function>
Function* real(const char* name) {
  return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, name));
}

__attribute__((constructor)) void start() {
  failingCall = std::strtoul(std::getenv("FAULT_CALL"), nullptr, 10);
  failingKind = std::getenv("FAULT_KIND");
}

__attribute__((destructor)) void stop() {
  failingKind = nullptr;
  if (failingCall != 0) return;
  std::array<char, 32> text;
  std::snprintf(text.data(), text.size(), "calls: %lu\n", calls.load());
  say(STDERR_FILENO, text.data());
}

}  // namespace

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
  return fails("open", path, EIO) ? nullptr : real<decltype(fopen)>("fopen")(path, mode);
}
std::FILE* fopen64(const char* path, const char* mode) {
  return fails("open", path, EIO) ? nullptr : real<decltype(fopen64)>("fopen64")(path, mode);
}
int open(const char* path, int flags, ...) {
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = va_arg(arguments, mode_t);
  va_end(arguments);
  return fails("open", path, EIO) ? -1 : real<decltype(open)>("open")(path, flags, mode);
}
ssize_t read(int file, void* buffer, std::size_t size) {
  return fails("read", file, EIO) ? -1 : real<decltype(read)>("read")(file, buffer, size);
}
ssize_t write(int file, const void* data, std::size_t size) {
  return fails("write", file, ENOSPC) ? -1 : real<decltype(write)>("write")(file, data, size);
}
ssize_t writev(int file, const iovec* parts, int count) {
  return fails("write", file, ENOSPC) ? -1 : real<decltype(writev)>("writev")(file, parts, count);
}
std::size_t fwrite(const void* data, std::size_t size, std::size_t count, std::FILE* file) {
  return fails("write", ::fileno(file), ENOSPC)
             ? real<decltype(fwrite)>("fwrite")(data, 1, size * count / 2, file) / size
             : real<decltype(fwrite)>("fwrite")(data, size, count, file);
}
int fclose(std::FILE* file) {
  const bool hasFailed = fails("close", ::fileno(file), EIO);
  const int result = real<decltype(fclose)>("fclose")(file);
  return hasFailed ? EOF : result;
}
int close(int file) {
  const bool hasFailed = fails("close", file, EIO);
  const int result = real<decltype(close)>("close")(file);
  return hasFailed ? -1 : result;
}
int rename(const char* from, const char* to) noexcept {
  return fails("rename", from, EIO) ? -1 : real<decltype(rename)>("rename")(from, to);
}
int mkdir(const char* path, mode_t mode) noexcept {
  return fails("mkdir", path, ENOSPC) ? -1 : real<decltype(mkdir)>("mkdir")(path, mode);
}
}
