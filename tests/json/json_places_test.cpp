// Places of values and keys in JSON text, and their lines and columns.
#include "cppbind/JsonPlaces.h"

#include "cppbind/TextPositions.h"
#include "support/support.h"

namespace {

using namespace test_support;
using cppbind::JsonPlaces;
using cppbind::TextPositions;
using Path = std::vector<std::string>;

constexpr std::size_t kNone = JsonPlaces::kNone;

std::string lineAndColumn(const std::string& text, std::size_t offset) {
  if (offset == kNone) return "-";
  const cppbind::TextPosition position = TextPositions(text).at(offset);
  return std::to_string(position.line) + ":" + std::to_string(position.column);
}

TEST(JsonPlacesTest, KeysAndValuesHaveTheirLineAndColumn) {
  const std::string deep = std::string(900, '[') + "{\"k\" : 5}" + std::string(900, ']');
  const struct {
    std::string text;
    Path path;
    std::string key, value;  // their lines and columns
    std::size_t depth;       // elements that exist
  } cases[] = {
      {"{\n\t\"a\":\t1}", {"a"}, "2:2", "2:7", 1},
      {"\xEF\xBB\xBF{\"a\": 1}", {"a"}, "1:2", "1:7", 1},
      {"\xEF\xBB\xBF {}", {}, "-", "1:2", 0},
      {"{\"\xE5\xB0\x8F\xF0\x9F\x98\x80\": \"\xC3\xA9\", \"b\": 1}", {"b"}, "1:13", "1:18", 1},
      {"[\"\xE5\xB0\", \"\xC0\xAF\xED\xA0\x80\", 1]", {"[2]"}, "-", "1:17", 1},
      {"[1,\r\n2,\r3,\n\r4,\n\n5]", {"[4]"}, "-", "7:1", 1},
      {"[1,\r\n2,\r3]", {"[2]"}, "-", "3:1", 1},
      {"[ // one ]\n1, /* two\n{[\" */ 2 /**/, 3]", {"[1]"}, "-", "3:8", 1},
      {"// one\r/* \n *//**/{\"a\" // b\n: 1}", {"b"}, "-", "3:8", 0},
      {"{/**/ \"a\": /*\"b\": 2*/ 1 /**/ , //\n \"b\":2}", {"b"}, "2:2", "2:6", 1},
      // The parser takes any token after a comment for a comma, and a comma after an empty key.
      {"{\"a\": 1 /**/; \"b\": 2 // c\n] \"d\": 3}", {"d"}, "2:3", "2:8", 1},
      {R"([{"b": 2, "": 0, }, 3])", {"[1]"}, "-", "1:21", 1},
      {R"({"a": {"x": 1}, "b": 0, "a": {"y": 2}})", {"a", "y"}, "1:31", "1:36", 2},
      {R"({"a": {"x": 1}, "b": 0, "a": {"y": 2}})", {"a", "x"}, "1:25", "1:30", 1},
      {R"({"\u0041b": 1, "Ab": 2})", {"Ab"}, "1:16", "1:22", 1},
      {R"({"Ab": 2, "\u0041b": 1})", {"Ab"}, "1:11", "1:22", 1},
      {R"({"\ud83d\ude00\u0041\n\/": 1})", {"\U0001F600A\n/"}, "1:2", "1:28", 1},
      {R"({"a\u0000": 1, "a": 2, "": {"[2]": 3}})", {"", "[2]"}, "1:29", "1:36", 2},
      {R"({"a\u0000": 1})", {std::string("a\0", 2)}, "1:2", "1:13", 1},
      {R"({"a.b": [0, {"c": "\"}"}, -1.5e+3]})", {"a.b", "[2]"}, "-", "1:27", 2},
      {R"({"a": [0, {"c": 1}]})", {"a", "[1]", "d", "e"}, "-", "1:11", 2},
      {R"({"a": [0, 1]})", {"a", "[2]"}, "1:2", "1:7", 1},
      {R"({"a": [0, 1]})", {"a", "[18446744073709551616]"}, "1:2", "1:7", 1},
      {R"({"a": [0, 1]})", {"a", "[-1]"}, "1:2", "1:7", 1},
      {R"({"a": [0, 1]})", {"a", "[01]"}, "1:2", "1:7", 1},
      {deep, Path(900, "[0]"), "-", "1:901", 900},
      {std::string(100000, '['), Path(2, "[0]"), "-", "1:3", 2},
      {"[1 2]", {"[0]"}, "-", "1:2", 1},
      {"{\"a\": [1, tru", {"a", "[1]"}, "1:2", "1:7", 1},
      {"", {"a"}, "-", "1:1", 0},
  };
  for (const auto& [text, path, key, value, depth] : cases) {
    const JsonPlaces places(text);
    const JsonPlaces::Place place = places.find(path);
    EXPECT_EQ(key, lineAndColumn(text, place.key)) << text;
    EXPECT_EQ(value, lineAndColumn(text, place.value)) << text;
    EXPECT_EQ(depth, place.depth) << text;
    const auto existing = path.begin() + static_cast<std::ptrdiff_t>(depth);
    EXPECT_EQ(Path(path.begin(), existing), places.pathTo(place.value)) << text;
  }
}

TEST(JsonPlacesTest, RepeatedKeysAndTextAfterTheValueAreFound) {
  const struct {
    std::string text;
    std::vector<std::pair<std::size_t, Path>> repeated;
    std::size_t after;
  } cases[] = {
      {R"({"a": 0, "a": [{"b": 1, "\u0062": 2, "b": 3}], "c": {"a": 1}})",
       {{9, {"a"}}, {24, {"a", "[0]", "b"}}, {37, {"a", "[0]", "b"}}},
       kNone},
      {"{\"a\": 1} // end\n/* of */\r\n ", {}, kNone},
      {"{\"a\": 1} // end\n and more", {}, 17},
      {"[1] /* open", {}, 4},
      {"1 2", {}, 2},
  };
  for (const auto& [text, repeated, after] : cases) {
    const JsonPlaces places(text);
    std::vector<std::pair<std::size_t, Path>> found;
    for (const std::size_t key : places.repeatedKeys()) found.emplace_back(key, places.pathTo(key));
    EXPECT_EQ(repeated, found) << text;
    EXPECT_EQ(after, places.textAfterValue()) << text;
  }
}

// Positions are counted from marks inside the text; some of these marks are inside characters.
TEST(JsonPlacesTest, PositionsInLongTextsAreThoseCountedFromTheBeginning) {
  const std::string unit = "x\xE5\xB0\x8F\xE5\xB0\r\n\xF0\x9F\x98\x80\r\xFF\n";
  const std::string positionsInUnit =
      "1.1 1.2 1.2 1.2 1.3 1.4 1.5 1.6 2.1 2.1 2.1 2.1 2.2 3.1 3.2 ";
  std::string text, expected, found;
  while (text.size() < 6000) text += unit;
  const TextPositions positions(text);
  for (std::size_t offset = 0; offset < text.size(); ++offset) {
    const auto [line, column] = positions.at(offset);
    const std::size_t lineOfUnit = offset / unit.size() * 3;
    found += std::to_string(line - lineOfUnit) + "." + std::to_string(column) + " ";
    if (offset % unit.size() == 0) expected += positionsInUnit;
  }
  EXPECT_EQ(expected, found);
  EXPECT_EQ(text.size() / unit.size() * 3 + 1, positions.at(kNone).line);
}

}  // namespace
