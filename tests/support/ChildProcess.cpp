#include "support/ChildProcess.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "support/TemporaryDirectory.h"

namespace test_support {

namespace {

void redirect(int descriptor, const boost::filesystem::path& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  if (file < 0 || ::dup2(file, descriptor) < 0) std::_Exit(99);
  ::close(file);
}

// Ends without exit handlers: a forked child lacks the threads that some libraries wait for there.
[[noreturn]] void runChild(const std::function<void()>& body) {
  int exitCode = 0;
  try {
    body();
  } catch (const std::exception& error) {
    std::cerr << "exception: " << error.what() << std::endl;
    exitCode = 1;
  }
  std::cout << std::flush;
  std::fflush(stdout);
  std::_Exit(exitCode);
}

}  // namespace

ChildResult runInChild(const std::function<void()>& body) {
  const auto base = boost::filesystem::temp_directory_path() /
                    boost::filesystem::unique_path("varrow-child-%%%%-%%%%-%%%%");
  const auto output = base.string() + ".out";
  const auto errors = base.string() + ".err";
  std::cout << std::flush;
  const pid_t child = ::fork();
  if (child < 0) throw std::runtime_error("fork failed");
  if (child == 0) {
    redirect(STDOUT_FILENO, output);
    redirect(STDERR_FILENO, errors);
    runChild(body);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  ChildResult result;
  if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
  result.output = readFile(output);
  result.errors = readFile(errors);
  boost::filesystem::remove(output);
  boost::filesystem::remove(errors);
  return result;
}

}  // namespace test_support
