// What nearly every test needs.
#pragma once

#include <gtest/gtest.h>
#include <json/json.h>

#include <csignal>
#include <exception>
#include <functional>
#include <sstream>
#include <string>

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

inline Json::Value json(const std::string& text) {
  Json::Value value;
  std::istringstream(text) >> value;
  return value;
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
