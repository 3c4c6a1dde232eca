// JSON and UTF-8 text between memory and files.
#include "libvarrow/json/json.h"

#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <clocale>
#include <stdexcept>

#include "support/TemporaryDirectory.h"

namespace {

using namespace libvarrow;
using test_support::readFile;
using test_support::writeFile;

class JsonTest : public test_support::InTemporaryDirectory {
 protected:
  // The message thrown and, before it, what was logged.
  template <class Call>
  std::pair<std::string, std::string> failure(Call call) {
    testing::internal::CaptureStderr();
    std::string thrown = "no error";
    try {
      call();
    } catch (const std::runtime_error& error) {
      thrown = error.what();
    }
    return {thrown, testing::internal::GetCapturedStderr()};
  }
};

TEST_F(JsonTest, TextIsParsedWithCommentsAndWrittenIndentedByOneSpace) {
  const Json::Value value = Str2Json("{ // what\n \"a\": {\"b\": [1.5, \"x\"]}}");
  EXPECT_EQ("{\n \"a\" : \n {\n  \"b\" : [ 1.5, \"x\" ]\n }\n}\n",
            Json2Str(Str2Json("{\"a\": {\"b\": [1.5, \"x\"]}}")));
  EXPECT_EQ(1.5, value["a"]["b"][0].asDouble());
  EXPECT_EQ(2, Str2Json("{\"a\": 1, \"a\": 2} and more")["a"].asInt());
}

TEST_F(JsonTest, TextThatDoesNotParseIsLoggedAndThrown) {
  for (const std::string& text :
       {std::string(), std::string("{\"a\": }"), std::string(5000, '[')}) {
    const auto [thrown, log] = failure([&] { Str2Json(text); });
    EXPECT_NE("no error", thrown) << text;
    EXPECT_EQ("Failed to parse, " + thrown + "\n\n", log);
  }
}

TEST_F(JsonTest, FilesThatAreMissingOrMalformedAreNamed) {
  writeFile("bad.json", "{\n\"%s%n\": nul}");
  for (const std::string path : {"none.json", "bad.json", "."}) {
    const auto [thrown, log] = failure([&] { File2Json(path); });
    EXPECT_EQ(0u, thrown.find(path + "* Line ")) << thrown;
    EXPECT_EQ("Failed to parse, " + path + ", " + thrown.substr(path.size()) + "\n\n", log);
  }
  writeFile("good.json", "[1]");
  EXPECT_EQ(1, File2Json("good.json")[0].asInt());
}

TEST_F(JsonTest, Utf8FilesAreWrittenWithTheirFoldersAndReadBack) {
  utility::writeFileForUTF8(directory.path().string() + "/a/b/c.txt", "小时\nx");
  EXPECT_EQ("小时\nx", readFile("a/b/c.txt"));
  EXPECT_EQ("小时\nx", utility::readUTF8File("a/b/c.txt"));
  const std::string binary = std::string(20000, 'y') + std::string("\0z", 2);
  utility::writeFileForUTF8(directory.path().string() + "/a/b/c.txt", binary);
  utility::writeFileForUTF8(directory.path().string() + "/a/b/c.txt", binary.substr(1));
  EXPECT_EQ(binary.substr(1), utility::readUTF8File("a/b/c.txt"));
  Json::Value value;
  value["k"][0] = "v";
  utility::writeFileForUTF8(directory.path().string() + "/v.json", value);
  EXPECT_EQ("{\"k\":[\"v\"]}\n", readFile("v.json"));
}

TEST_F(JsonTest, NumbersAreWrittenTheSameUnderTheCLocale) {
  const char* const before = std::setlocale(LC_NUMERIC, nullptr);
  const std::string kept = before;
  for (const char* locale : {"de_DE.UTF-8", "ps_AF.UTF-8"}) {
    if (std::setlocale(LC_NUMERIC, locale) == nullptr) continue;  // not installed
    EXPECT_EQ("1.5\n", Json2Str(Json::Value(1.5))) << locale;
    EXPECT_EQ(1.5, Str2Json("[1.5]")[0].asDouble()) << locale;
  }
  std::setlocale(LC_NUMERIC, kept.c_str());
}

TEST_F(JsonTest, ARelativePathIsTakenFromTheDirectoryOfTheStart) {
  const std::string name = boost::filesystem::unique_path("varrow-%%%%%%%%.txt").string();
  utility::writeFileForUTF8(name, "x");
  EXPECT_FALSE(boost::filesystem::exists(name));
  EXPECT_TRUE(boost::filesystem::remove(boost::filesystem::initial_path() / name));
}

TEST_F(JsonTest, AMissingFileAndAFolderThatCannotBeMadeAreLoggedAndThrown) {
  const auto [missing, missingLog] = failure([] { utility::readUTF8File("no/file.txt"); });
  EXPECT_NE(std::string::npos, missing.find("readUTF8File("));
  const std::string ending = " file:no/file.txtnot exist!";
  EXPECT_EQ(missing.size() - ending.size(), missing.find(ending));
  EXPECT_EQ(missing + "\n", missingLog);
  writeFile("file", "");
  const std::string below = directory.path().string() + "/file/sub";
  const auto [failed, failedLog] =
      failure([&] { utility::writeFileForUTF8(below + "/x.txt", ""); });
  EXPECT_NE(std::string::npos, failed.find("writeFileForUTF8("));
  EXPECT_NE(std::string::npos, failed.find(" create dir " + below + "failed for :"));
  EXPECT_EQ(failed + "\n", failedLog);
  EXPECT_NO_THROW(utility::writeFileForUTF8(directory.path().string(), "a directory"));
}

}  // namespace
