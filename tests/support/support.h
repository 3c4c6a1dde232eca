// What nearly every test needs.
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

/// What the exception that `call` throws says.
template <class Call>
std::string errorOf(Call call) {
  try {
    call();
  } catch (const std::exception& error) {
    return error.what();
  }
  return "no error";
}

/// Waits for `isDone()`; false when it does not come true in ten minutes, which takes a hang.
template <class Condition>
bool eventually(Condition isDone) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(10);
  while (!isDone()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

/// By the library, as jsoncpp alone reads numbers with the global locale's decimal point.
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
