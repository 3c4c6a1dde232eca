// File names, directories, encodings and small text helpers.

#include <boost/filesystem/operations.hpp>
#include <boost/locale/encoding.hpp>
#include <random>

#include "libvarrow/utility/DirCreator.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/utility/file_name.h"
#include "libvarrow/utility/text.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
namespace fs = boost::filesystem;

class UtilityTest : public test_support::InTemporaryDirectory {};

std::string adjusted(std::string name) {
  utility::adjustFileName(name);
  return name;
}

TEST_F(UtilityTest, AFileNameBecomesAbsoluteAndALongStemIsCut) {
  EXPECT_EQ(directory.path().generic_string() + "/a/../b.json", adjusted("a/../b.json"));
  struct Case {
    std::size_t folder, stem, leftOfStem;  // bytes of "/dd...d/", "C:/dd...d/" and "ss...s"
    std::string extension;
  };
  // At most 255 bytes of file name and 259 of path.
  const Case cases[] = {{4, 1, 1, ""},          {4, 251, 250, ".json"},  {4, 250, 250, ".json"},
                        {5, 250, 249, ".json"}, {50, 295, 204, ".json"}, {4, 300, 255, ""},
                        {300, 10, 0, ".json"},  {300, 0, 0, ".json"}};
  for (const auto& [folder, stem, left, extension] : cases) {
    const std::string root = directory.path().root_name().string() + "/";
    const std::string path = root + std::string(folder - root.size() - 1, 'd') + "/";
    const std::string name = adjusted(path + std::string(stem, 's') + extension);
    EXPECT_EQ(path + std::string(left, 's') + extension, name) << folder << ' ' << stem;
  }
  const std::string relative = std::string(295, 's') + ".json";
  testing::internal::CaptureStderr();
  EXPECT_EQ(adjusted(directory.path().generic_string() + "/" + relative), adjusted(relative));
  const std::string folder = directory.path().generic_string();
  EXPECT_EQ("the file name " + folder + "/" + relative + " is too long and is cut to " +
                adjusted(relative) + "; further cuts in its directory are not logged\n",
            testing::internal::GetCapturedStderr())
      << "once for each directory";
}

TEST_F(UtilityTest, RemovesFilesAndDirectoriesAndLogsErrors) {
  test_support::writeFile("d/e/f.txt", "");
  test_support::writeFile("g.txt", "");
  boost::system::error_code unsupported;
  fs::create_symlink("nowhere", "dangling", unsupported);
  testing::internal::CaptureStderr();
  for (const char* path : {"d", "g.txt", "dangling", "never there"}) {
    EXPECT_TRUE(utility::removeIfExist(path)) << path;
  }
  EXPECT_EQ("", testing::internal::GetCapturedStderr());
  EXPECT_TRUE(fs::is_empty("."));
  testing::internal::CaptureStderr();
  EXPECT_FALSE(utility::removeIfExist("."));
  EXPECT_EQ(0u,
            testing::internal::GetCapturedStderr().find("can not remove path:., error message:"));
}

TEST_F(UtilityTest, CreatesDirectoriesWithTheirParentsOrLogsTheError) {
  DirCreator("a/b/c", true);
  EXPECT_TRUE(fs::is_directory("a/b/c"));
  test_support::writeFile("file", "");
  testing::internal::CaptureStderr();
  EXPECT_NO_THROW(DirCreator("file/sub", true));
  EXPECT_EQ(0u, testing::internal::GetCapturedStderr().find(
                    "path:file/sub\npath_is_floder: 1\nexception:"));
}

TEST(UTFConverterTest, TextIsConvertedWithoutInvalidBytes) {
  const char* const expected = std::getenv("VARROW_TEST_CODE_PAGE");
  const std::string& encoding = utility::codePageName();
  EXPECT_EQ(expected == nullptr ? "UTF-8" : expected, encoding);
  // Lead and continuation bytes of every length, and the limits of their ranges.
  const std::string bytes = "aZ\x7F\x80\x8F\x90\x9F\xA0\xBF\xC1\xC2\xE0\xE5\xED\xEF\xF0\xF4\xF5";
  std::mt19937 random(20240305);
  for (int i = 0; i < 20000; ++i) {
    std::string text(random() % 3, 'x');
    while (random() % 8 != 0)
      text += random() % 3 == 0 ? "时" : std::string(1, bytes[random() % bytes.size()]);
    ASSERT_EQ(boost::locale::conv::from_utf<char>(text, encoding), utility::fromUtf8(text)) << i;
    ASSERT_EQ(boost::locale::conv::to_utf<char>(text, encoding), utility::toUtf8(text)) << i;
  }
}

TEST(TextTest, EveryLineGetsThePrefix) {
  EXPECT_EQ("> x\n> \n> y", PrefixOnEachLine("> ", "x\n\ny"));
  EXPECT_EQ("> x\n", PrefixOnEachLine("> ", "x\n"));
  EXPECT_EQ("", PrefixOnEachLine("> ", ""));
}

TEST(TextTest, SerialNumbersCountForEachName) {
  EXPECT_EQ(0u, getSerialNum("orders"));
  EXPECT_EQ(0u, getSerialNum("jobs"));
  EXPECT_EQ(1u, getSerialNum("orders"));
}

}  // namespace
