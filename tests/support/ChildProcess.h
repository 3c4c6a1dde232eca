// Runs code that ends or permanently changes the process in a child process.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace test_support {

struct ChildResult {
  int exitCode = -1;  ///< -1 when a signal ended the child
  int signal = 0;     ///< 0 when it exited
  std::string output;
  std::string errors;
};

/// Forks, runs `body` in the child and ends it with 0, without exit handlers. An exception that
/// leaves `body` is printed to standard error and ends the child with 1.
ChildResult runInChild(const std::function<void()>& body);

/// Runs a program in the current directory: its path, or a name on the search path, and arguments.
/// It has ten minutes, on Windows those of the test.
ChildResult runProgram(std::vector<std::string> commandLine);

}  // namespace test_support
