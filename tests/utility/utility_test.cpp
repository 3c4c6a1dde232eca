// File names, directories, encodings and small text helpers.
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <string>

#include "libvarrow/utility/DirCreator.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/utility/file_name.h"
#include "libvarrow/utility/text.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace libvarrow;
namespace fs = boost::filesystem;

class UtilityTest : public test_support::InTemporaryDirectory {
 protected:
  std::string adjusted(std::string name) {
    utility::adjustFileName(name);
    return name;
  }
};

TEST_F(UtilityTest, AShortFileNameOnlyBecomesAbsolute) {
  EXPECT_EQ(directory.path().generic_string() + "/a/../b.json", adjusted("a/../b.json"));
  EXPECT_EQ("/x/y", adjusted("/x/y"));
}

TEST_F(UtilityTest, ALongNameLosesTheEndOfItsStem) {
  struct Case {
    std::size_t folder;  // bytes of "/dd...d/"
    std::size_t stem;
    std::string extension;
    std::size_t leftOfStem;
  };
  const Case cases[] = {{3, 251, ".json", 250},  {3, 250, ".json", 250},  // 255 a file name
                        {5, 250, ".json", 249},  {4, 250, ".json", 250},  // 259 a path
                        {50, 295, ".json", 204}, {3, 300, "", 255},
                        {300, 10, ".json", 0},   {300, 0, ".json", 0}};
  for (const Case& c : cases) {
    const std::string folder = "/" + std::string(c.folder - 2, 'd') + "/";
    EXPECT_EQ(folder + std::string(c.leftOfStem, 's') + c.extension,
              adjusted(folder + std::string(c.stem, 's') + c.extension))
        << c.folder << ' ' << c.stem;
  }
}

TEST_F(UtilityTest, ALongRelativeNameIsCutAsItsAbsolutePath) {
  const std::string name = adjusted(std::string(295, 's') + ".json");
  const std::size_t total = directory.path().size() + 1 + 300;
  const std::size_t cut = std::max<std::size_t>(45, total - 259);
  EXPECT_EQ(total - cut, name.size());
  EXPECT_EQ(directory.path().generic_string() + "/" + std::string(295 - cut, 's') + ".json", name);
}

TEST_F(UtilityTest, RemovingTakesFilesAndWholeDirectories) {
  test_support::writeFile("d/e/f.txt", "");
  test_support::writeFile("g.txt", "");
  testing::internal::CaptureStderr();
  EXPECT_TRUE(utility::removeIfExist("d"));
  EXPECT_TRUE(utility::removeIfExist("g.txt"));
  EXPECT_TRUE(utility::removeIfExist("never there"));
  fs::create_symlink("nowhere", "dangling");
  EXPECT_TRUE(utility::removeIfExist("dangling"));
  EXPECT_EQ("", testing::internal::GetCapturedStderr());
  EXPECT_TRUE(fs::is_empty("."));
}

TEST_F(UtilityTest, WhatCannotBeRemovedIsLogged) {
  testing::internal::CaptureStderr();
  const bool removed = utility::removeIfExist("/proc/self/stat");
  EXPECT_FALSE(removed);
  EXPECT_EQ(0u, testing::internal::GetCapturedStderr().find(
                    "can not remove path:/proc/self/stat, error message:"));
}

TEST_F(UtilityTest, DirectoriesAreMadeForAFolderAndForAFile) {
  DirCreator("a/b/c", true);
  EXPECT_TRUE(fs::is_directory("a/b/c"));
  DirCreator("x/y/z.txt", false);
  EXPECT_TRUE(fs::is_directory("x/y"));
  EXPECT_FALSE(fs::exists("x/y/z.txt"));
  test_support::writeFile("file", "");
  testing::internal::CaptureStderr();
  EXPECT_NO_THROW(DirCreator("file/sub", true));
  EXPECT_EQ(0u, testing::internal::GetCapturedStderr().find(
                    "path:file/sub\npath_is_floder: 1\nexception:"));
}

TEST(UTFConverterTest, TextInMemoryIsUtf8HereAndInvalidBytesAreLeftOut) {
  EXPECT_EQ("UTF-8", utility::codePageName());
  EXPECT_EQ("小时", utility::fromUtf8("小时"));
  EXPECT_EQ("ab", utility::fromUtf8("a\xff"
                                    "b"));
  EXPECT_EQ("ab", utility::toUtf8("a\xc3"
                                  "b"));
}

TEST(TextTest, EveryLineGetsThePrefix) {
  EXPECT_EQ("> x\n> y", PrefixOnEachLine("> ", "x\ny"));
  EXPECT_EQ("> x\n", PrefixOnEachLine("> ", "x\n"));
  EXPECT_EQ("> \n> \n", PrefixOnEachLine("> ", "\n\n"));
  EXPECT_EQ("", PrefixOnEachLine("> ", ""));
}

TEST(TextTest, SerialNumbersCountForEachName) {
  EXPECT_EQ(0u, getSerialNum("orders"));
  EXPECT_EQ(1u, getSerialNum("orders"));
  EXPECT_EQ(0u, getSerialNum("jobs"));
  EXPECT_EQ(2u, getSerialNum("orders"));
}

}  // namespace
