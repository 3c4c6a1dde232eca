#include "harness.h"

#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "libvarrow/log/log.h"

namespace fuzz {

namespace {

struct ScratchDirectory {
  boost::filesystem::path path =
      boost::filesystem::temp_directory_path() / boost::filesystem::unique_path("varrow-%%%%%%%%");
  ScratchDirectory() { boost::filesystem::create_directories(path); }
  ~ScratchDirectory() {
    boost::system::error_code ignored;
    boost::filesystem::remove_all(path, ignored);
  }
};

}  // namespace

std::string scratch(const std::string& name) {
  static const ScratchDirectory directory;
  return directory.path.string() + "/" + name;
}

std::string writeScratch(const std::string& name, const std::string& bytes) {
  std::string path = scratch(name);
  std::ofstream(path, std::ios::binary) << bytes;
  return path;
}

void requireSame(const std::string& first, const std::string& second, const char* what) {
  if (first == second) return;
  std::cerr << what << ":\n<" << first << ">\n<" << second << ">\n";
  std::abort();
}

void require(bool condition, const char* what) {
  requireSame(condition ? "yes" : "no", "yes", what);
}

}  // namespace fuzz

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  // Log lines are formatted, but not written.
  InitRootLogger(fuzz::writeScratch("log.conf",
                                    "log4cplus.rootLogger=TRACE, nowhere\n"
                                    "log4cplus.appender.nowhere=log4cplus::NullAppender\n"));
  std::cout.rdbuf(nullptr);
  return 0;
}
