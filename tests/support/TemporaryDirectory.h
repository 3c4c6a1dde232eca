// A fresh directory that is current while a test runs.
#pragma once

#include <gtest/gtest.h>

#include <boost/filesystem/path.hpp>
#include <string>

namespace test_support {

/// Creates an empty directory, makes it current, and removes it with all its content at the end.
class TemporaryDirectory {
 public:
  TemporaryDirectory();
  ~TemporaryDirectory();

  const boost::filesystem::path& path() const { return path_; }

 private:
  boost::filesystem::path path_;
  boost::filesystem::path before_;
};

/// A test that runs in a new directory.
class InTemporaryDirectory : public testing::Test {
 protected:
  TemporaryDirectory directory;
};

std::string readFile(const boost::filesystem::path& path);
void writeFile(const boost::filesystem::path& path, const std::string& text);

}  // namespace test_support
