// The reports of crashes in texts and files.
#pragma once

#include <boost/filesystem/operations.hpp>
#include <regex>
#include <string>
#include <vector>

#include "support/support.h"

namespace test_support {

inline std::size_t occurrences(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
  return count;
}

/// Returns the dump files in the current directory that are not empty.
inline std::vector<std::string> dumpFiles() {
  const std::regex name(R"(\d{4}(_\d\d){5}\.coredump)");
  std::vector<std::string> files;
  for (const auto& entry : boost::filesystem::directory_iterator(".")) {
    const std::string file = entry.path().filename().string();
    if (std::regex_match(file, name) && !readFile(file).empty()) files.push_back(file);
  }
  return files;
}

}  // namespace test_support
