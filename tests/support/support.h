// Helpers of nearly all tests.
#pragma once

#include <gtest/gtest.h>
#include <json/json.h>

#include <chrono>
#include <csignal>
#include <exception>
#include <functional>
#include <string>
#include <thread>

#include "libvarrow/json/json.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"

namespace test_support {

/// Returns the message of the exception that `call` throws, or "no error".
template <class Call>
std::string errorOf(Call call) {
  try {
    call();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no error";
}

/// Waits for `isDone()`. Returns false after ten minutes, which only a hang takes.
template <class Condition>
bool eventually(Condition isDone) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(10);
  while (!isDone()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

/// Parses JSON by the library: jsoncpp alone uses the decimal point of the global locale.
inline Json::Value json(const std::string& text) {
  return libvarrow::Str2Json(text);
}

inline bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

/// Fails unless `call` aborts the process, with `report` somewhere on standard error.
inline void expectAbort(const std::string& report, const std::function<void()>& call) {
  const ChildResult child = runInChild(call);
  EXPECT_EQ(SIGABRT, child.signal) << report;
  EXPECT_TRUE(contains(child.errors, report)) << report << '\n' << child.errors;
}

}  // namespace test_support
