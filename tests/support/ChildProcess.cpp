#include "support/ChildProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <iostream>
#include <stdexcept>

namespace test_support {

namespace {

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
  ::_exit(exitCode);
}

std::string takeContent(std::FILE* file) {
  std::string text(static_cast<std::size_t>(::lseek(::fileno(file), 0, SEEK_END)), '\0');
  std::rewind(file);
  text.resize(std::fread(text.data(), 1, text.size(), file));
  std::fclose(file);
  return text;
}

}  // namespace

ChildResult runInChild(const std::function<void()>& body) {
  std::FILE* output = std::tmpfile();
  std::FILE* errors = std::tmpfile();
  std::cout << std::flush;
  const pid_t child = output != nullptr && errors != nullptr ? ::fork() : -1;
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) {
    ::dup2(::fileno(output), STDOUT_FILENO);
    ::dup2(::fileno(errors), STDERR_FILENO);
    runChild(body);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WTERMSIG(status), takeContent(output),
          takeContent(errors)};
}

ChildResult runProgram(std::vector<std::string> commandLine) {
  std::vector<char*> arguments;
  for (std::string& argument : commandLine) arguments.push_back(argument.data());
  arguments.push_back(nullptr);
  return runInChild([&] {
    ::alarm(600);
    ::execvp(arguments.front(), arguments.data());
    throw std::runtime_error("no " + commandLine.front());
  });
}

}  // namespace test_support
