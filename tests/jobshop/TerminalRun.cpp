#include "TerminalRun.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

namespace jobshop_test {

namespace {

// Until the other side is closed, which reads as an error.
std::string readAll(int terminal) {
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t count = 0; (count = ::read(terminal, buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace

std::string runOnTerminal(const char* program, std::vector<std::string> arguments,
                          unsigned short columns) {
  std::vector<char*> argv;
  arguments.insert(arguments.begin(), program);
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  winsize size{};
  size.ws_row = 24;
  size.ws_col = columns;
  int terminal = -1;
  const pid_t child = ::forkpty(&terminal, nullptr, nullptr, &size);
  if (child < 0) throw std::runtime_error("no terminal");
  if (child == 0) {
    ::execv(program, argv.data());
    ::_exit(98);
  }
  const std::string text = readAll(terminal);
  ::close(terminal);
  int status = 0;
  ::waitpid(child, &status, 0);
  if (status != 0) throw std::runtime_error("failed: " + text);
  return text;
}

}  // namespace jobshop_test
