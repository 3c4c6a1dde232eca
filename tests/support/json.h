// JSON values from literals.
#pragma once

#include <json/json.h>

#include <sstream>

namespace test_support {

inline Json::Value json(const std::string& text) {
  Json::Value value;
  std::istringstream(text) >> value;
  return value;
}

}  // namespace test_support
