// Runs the small host as a process.
#pragma once

#include <boost/filesystem/operations.hpp>
#include <string>
#include <vector>

#include "support/support.h"

namespace host_test {

namespace fs = boost::filesystem;
using namespace test_support;

inline ChildResult orders(std::vector<std::string> arguments) {
  arguments.insert(arguments.begin(), ORDERS);
  return runProgram(arguments);
}

/// Writes a pipeline file with `modules`, the elements of a JSON list.
inline void writePipeline(const std::string& modules, const std::string& file = "p.json") {
  writeFile(file, "{\"modules\": [" + modules + "]}");
}

inline std::string act(const std::string& how, const std::string& text = "") {
  return R"({"Act": {"how": ")" + how + R"(", "text": ")" + text + "\"}}";
}

/// Returns the last line, without its end.
inline std::string lastLine(const std::string& text) {
  if (text.empty() || text.back() != '\n') return text;
  const std::size_t before = text.rfind('\n', text.size() - 2);
  const std::size_t begin = before == std::string::npos ? 0 : before + 1;
  return text.substr(begin, text.size() - begin - 1);
}

inline std::string outcome(const fs::path& run) {
  return libvarrow::File2Json((run / "run.json").string())["outcome"].asString();
}

}  // namespace host_test
