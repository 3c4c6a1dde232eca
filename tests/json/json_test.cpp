// JSON and UTF-8 text between memory and files.
#include "libvarrow/json/json.h"

#include <boost/filesystem/operations.hpp>

#include "libvarrow/utility/UTFConverter.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace libvarrow::utility;
using namespace test_support;

class JsonTest : public InTemporaryDirectory {
 protected:
  // Returns the message of the exception and the log before it.
  template <class Call>
  std::pair<std::string, std::string> failure(Call call) {
    testing::internal::CaptureStderr();
    const std::string thrown = errorOf(call);
    return {thrown, testing::internal::GetCapturedStderr()};
  }
  const std::string folder = directory.path().generic_string() + "/";
};

TEST_F(JsonTest, TextIsParsedWithCommentsAndWrittenIndented) {
  EXPECT_EQ("{\n \"a\" : \n {\n  \"b\" : [ 1.5, \"x\" ]\n }\n}\n",
            Json2Str(Str2Json("{\"a\": {\"b\": [1.5, \"x\"]}}")));
  EXPECT_EQ(3, Str2Json("\xEF\xBB\xBF[1, 2, 3]").size()) << "a byte order mark is ignored";
  EXPECT_EQ(2, Str2Json("{\"a\": 1, // one\n \"a\": 2} and more")["a"].asInt());
  EXPECT_TRUE(contains(Json2Str(Str2Json("[1 // one\n]")), "// one"));
}

TEST_F(JsonTest, ParseErrorsAreLoggedAndThrownWithTheFileName) {
  for (const std::string& text : {std::string(), std::string("{"), std::string(5000, '[')}) {
    const auto [thrown, log] = failure([&] { Str2Json(text); });
    EXPECT_NE("no error", thrown) << text;
    EXPECT_EQ("Failed to parse, " + thrown + "\n\n", log);
  }
  writeFile("bad.json", "{\n\"%s%n\": nul}");
  for (const std::string path : {"none.json", "bad.json", "."}) {
    const auto [thrown, log] = failure([&] { File2Json(path); });
    EXPECT_EQ(0u, thrown.find(path + "* Line ")) << thrown;
    EXPECT_EQ("Failed to parse, " + path + ", " + thrown.substr(path.size()) + "\n\n", log);
  }
}

TEST_F(JsonTest, Utf8FilesAreWrittenWithTheirFoldersAndReadBack) {
  const std::string longText = std::string(20000, 'y') + '\0' + fromUtf8("小é");
  writeFileForUTF8(folder + "a/b/c.txt", longText);
  EXPECT_EQ(longText, readUTF8File("a/b/c.txt"));
  writeFileForUTF8(folder + "a/b/c.txt", fromUtf8("小时é\nx"));
  EXPECT_EQ(toUtf8(fromUtf8("小时é\nx")), readFile("a/b/c.txt"));
  writeFileForUTF8(folder + "v.json", Str2Json("{\"k\": [\"v\"]}"));
  EXPECT_EQ("{\"k\":[\"v\"]}\n", readFile("v.json"));
}

TEST_F(JsonTest, RelativePathsStartFromTheInitialDirectory) {
  const std::string name = boost::filesystem::unique_path("varrow-%%%%%%%%.txt").string();
  writeFileForUTF8(name, "x");
  EXPECT_FALSE(boost::filesystem::exists(name));
  EXPECT_TRUE(boost::filesystem::remove(boost::filesystem::initial_path() / name));
}

TEST_F(JsonTest, FileErrorsAreLoggedAndThrown) {
  const auto [missing, missingLog] = failure([] { readUTF8File("no/file.txt"); });
  EXPECT_EQ(missing + "\n", missingLog);
  EXPECT_TRUE(contains(missing, "readUTF8File("));
  EXPECT_TRUE(contains(missing, " file:no/file.txtnot exist!"));
  writeFile("file", "");
  const auto [failed, failedLog] = failure([&] { writeFileForUTF8(folder + "file/sub/x", ""); });
  EXPECT_EQ(failed + "\n", failedLog);
  EXPECT_TRUE(contains(failed, "writeFileForUTF8("));
  EXPECT_TRUE(contains(failed, " create dir " + folder + "file/subfailed for :"));
  EXPECT_NO_THROW(writeFileForUTF8(directory.path().string(), "a directory"));
}

}  // namespace
