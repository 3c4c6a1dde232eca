// A child is the test program again with the same test alone. It repeats the test up to the call,
// runs the body there and ends.
#include <gtest/gtest.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

#include "support/ChildProcess.h"

namespace test_support {

namespace {

constexpr const char* kCallVariable = "VARROW_TEST_CHILD";  // which call has the body
constexpr UINT kTimeOut = 99;                               // exit code of a process that was ended
constexpr const char* kFolderVariable = "VARROW_TEST_CHILD_FOLDER";  // where the body runs

std::string variable(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

// Returns how many children the current test has asked for, with this one.
int numberOfCall() {
  static const testing::TestInfo* test = nullptr;
  static int calls = 0;
  const testing::TestInfo* current = testing::UnitTest::GetInstance()->current_test_info();
  if (current != test) calls = 0;
  test = current;
  return ++calls;
}

// Removes what the repetition of the test has written.
void empty(std::FILE* file) {
  std::fflush(file);
  std::rewind(file);
  ::_chsize(::_fileno(file), 0);
}

[[noreturn]] void runBody(const std::function<void()>& body) {
  std::cout << std::flush;
  empty(stdout);
  empty(stderr);
  SetCurrentDirectoryA(variable(kFolderVariable).c_str());
  ::_putenv_s(kCallVariable, "");
  UINT exitCode = 0;
  try {
    body();
  } catch (const std::exception& error) {
    std::cerr << "exception: " << error.what() << std::endl;
    exitCode = 1;
  }
  std::cout << std::flush;
  std::fflush(nullptr);
  TerminateProcess(GetCurrentProcess(), exitCode);  // without exit handlers
  std::abort();
}

/// An inheritable file for the output of a child.
class OutputFile {
 public:
  OutputFile() {
    std::array<char, MAX_PATH> folder{}, name{};
    GetTempPathA(MAX_PATH, folder.data());
    GetTempFileNameA(folder.data(), "var", 0, name.data());
    name_ = name.data();
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    handle_ =
        CreateFileA(name_.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle_ == INVALID_HANDLE_VALUE) throw std::runtime_error("no file for a child process");
  }
  ~OutputFile() {
    CloseHandle(handle_);
    DeleteFileA(name_.c_str());
  }
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  HANDLE handle() const { return handle_; }

  std::string content() const {
    std::string text;
    std::FILE* file = std::fopen(name_.c_str(), "r");  // as text, without carriage returns
    if (file == nullptr) throw std::runtime_error("no output of a child process");
    for (int c = std::fgetc(file); c != EOF; c = std::fgetc(file)) text += static_cast<char>(c);
    std::fclose(file);
    return text;
  }

 private:
  std::string name_;
  HANDLE handle_ = nullptr;
};

// Quotes an argument as the C library reads it.
std::string quoted(const std::string& argument) {
  std::string text = "\"";
  for (const char c : argument) {
    if (c == '"') text += '\\';
    text += c;
  }
  return text + '"';
}

std::string sameTestAlone() {
  std::array<char, MAX_PATH> program{};
  GetModuleFileNameA(nullptr, program.data(), MAX_PATH);
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  return '"' + std::string(program.data()) + "\" --gtest_filter=" + test->test_suite_name() + '.' +
         test->name() + " --gtest_repeat=1 --gtest_output=";
}

DWORD exitCodeOf(std::string command, const OutputFile& output, const OutputFile& errors) {
  STARTUPINFOA start{};
  start.cb = sizeof start;
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  start.hStdOutput = output.handle();
  start.hStdError = errors.handle();
  PROCESS_INFORMATION child{};
  if (!CreateProcessA(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                      &child)) {
    throw std::runtime_error("no child process");
  }
  DWORD exitCode = 0;
  constexpr DWORD kLongestMs = 600000;
  if (WaitForSingleObject(child.hProcess, kLongestMs) == WAIT_TIMEOUT) {
    TerminateProcess(child.hProcess, kTimeOut);
    WaitForSingleObject(child.hProcess, INFINITE);
  }
  GetExitCodeProcess(child.hProcess, &exitCode);
  CloseHandle(child.hThread);
  CloseHandle(child.hProcess);
  return exitCode;
}

// Returns the signal of a process that ended with `exitCode`, or 0.
int signalOf(DWORD exitCode) {
  constexpr DWORD kAborted = 3;
  if (exitCode == kAborted) return SIGABRT;
  return exitCode == EXCEPTION_ACCESS_VIOLATION || exitCode == EXCEPTION_STACK_OVERFLOW ? SIGSEGV
                                                                                        : 0;
}

ChildResult resultOf(DWORD exitCode, const OutputFile& output, const OutputFile& errors) {
  const int signal = signalOf(exitCode);
  return {signal == 0 ? static_cast<int>(exitCode) : -1, signal, output.content(),
          errors.content()};
}

}  // namespace

ChildResult runInChild(const std::function<void()>& body) {
  const int call = numberOfCall();
  const std::string callOfBody = variable(kCallVariable);
  if (callOfBody == std::to_string(call)) runBody(body);
  if (!callOfBody.empty()) return {};
  std::array<char, MAX_PATH> folder{};
  GetCurrentDirectoryA(MAX_PATH, folder.data());
  ::_putenv_s(kFolderVariable, folder.data());
  ::_putenv_s(kCallVariable, std::to_string(call).c_str());
  const OutputFile output, errors;
  const DWORD exitCode = exitCodeOf(sameTestAlone(), output, errors);
  ::_putenv_s(kCallVariable, "");
  return resultOf(exitCode, output, errors);
}

ChildResult runProgram(std::vector<std::string> commandLine) {
  std::string command;
  for (const std::string& argument : commandLine) command += quoted(argument) + ' ';
  const OutputFile output, errors;
  return resultOf(exitCodeOf(command, output, errors), output, errors);
}

}  // namespace test_support
