// A child is the test program again with the same test alone. It repeats the test up to the call,
// runs the body there and ends.
#include <Poco/Exception.h>
#include <Poco/Pipe.h>
#include <Poco/PipeStream.h>
#include <Poco/Process.h>
#include <gtest/gtest.h>
#include <windows.h>

#include <boost/algorithm/string/erase.hpp>
#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "libvarrow/utility/UTFConverter.h"
#include "support/ChildProcess.h"
#include "support/environment.h"

namespace test_support {

namespace {

constexpr const char* kCallVariable = "VARROW_TEST_CHILD";           // which call has the body
constexpr const char* kFolderVariable = "VARROW_TEST_CHILD_FOLDER";  // where the body runs
const std::string kBegin = "\n--- the body begins ---\n";  // after the repetition's output

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

[[noreturn]] void runBody(const std::function<void()>& body) {
  std::cout << kBegin << std::flush;
  std::cerr << kBegin;
  boost::filesystem::current_path(variable(kFolderVariable));
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

// Returns the output of a process up to its end.
std::string outputOf(const Poco::Pipe& pipe) {
  Poco::PipeInputStream stream(pipe);
  std::string text(std::istreambuf_iterator<char>(stream), {});
  boost::erase_all(text, "\r");
  const std::size_t begin = text.find(kBegin);
  return begin == std::string::npos ? text : text.substr(begin + kBegin.size());
}

constexpr int kAborted = 3;  // without a crash handler; also a status of hosts

// Returns the signal of a process that ended with `exitCode`, or 0.
int signalOf(int exitCode) {
  if (exitCode == kAborted || exitCode == 134) return SIGABRT;
  if (exitCode == 128 + kKillSignal) return kKillSignal;
  const auto code = static_cast<DWORD>(exitCode);
  return code == EXCEPTION_ACCESS_VIOLATION || code == EXCEPTION_STACK_OVERFLOW ? SIGSEGV : 0;
}

// Tries again with new pipes: on a busy machine, wine sometimes refuses to create a process.
Poco::ProcessHandle launched(const std::vector<std::string>& commandLine, Poco::Pipe& output,
                             Poco::Pipe& errors) {
  constexpr int kTries = 5;
  for (int tries = 1;; ++tries) {
    output = Poco::Pipe();
    errors = Poco::Pipe();
    try {
      return Poco::Process::launch(commandLine.front(),
                                   {commandLine.begin() + 1, commandLine.end()}, nullptr, &output,
                                   &errors);
    } catch (const Poco::SystemException& error) {
      if (tries == kTries) throw std::runtime_error(error.displayText());
      std::this_thread::sleep_for(std::chrono::seconds(1));
    }
  }
}

ChildResult run(std::vector<std::string> commandLine) {
  for (std::string& part : commandLine) part = libvarrow::utility::toUtf8(part);
  Poco::Pipe output, errors;
  const Poco::ProcessHandle process = launched(commandLine, output, errors);
  ChildResult result;
  std::thread reader([&] { result.errors = outputOf(errors); });
  result.output = outputOf(output);
  reader.join();
  int exitCode = 0;
  try {
    exitCode = process.wait();
  } catch (const Poco::SystemException&) {  // under wine, for a program that is not for Windows
  }
  result.signal = signalOf(exitCode);
  if (result.signal == 0 || exitCode == kAborted) result.exitCode = exitCode;
  return result;
}

}  // namespace

ChildResult runInChild(const std::function<void()>& body) {
  const int call = numberOfCall();
  const std::string callOfBody = variable(kCallVariable);
  if (callOfBody == std::to_string(call)) runBody(body);
  if (!callOfBody.empty()) return {};
  ::_putenv_s(kFolderVariable, boost::filesystem::current_path().string().c_str());
  ::_putenv_s(kCallVariable, std::to_string(call).c_str());
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  const std::string filter = "--gtest_filter=" + std::string(test->test_suite_name()) + '.';
  const ChildResult result = run({boost::dll::program_location().string(), filter + test->name(),
                                  "--gtest_repeat=1", "--gtest_output="});
  ::_putenv_s(kCallVariable, "");
  return result;
}

ChildResult runProgram(std::vector<std::string> commandLine) {
  return run(std::move(commandLine));
}

}  // namespace test_support
