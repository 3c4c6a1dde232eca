// JSON values from literals.
#pragma once

#include <json/reader.h>
#include <json/value.h>

#include <sstream>
#include <string>

namespace test_support {

inline Json::Value json(const std::string& text) {
  Json::Value value;
  std::istringstream(text) >> value;
  return value;
}

}  // namespace test_support
