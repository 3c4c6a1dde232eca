// The string builder, indentation, and the stream that makes its folder.
#include <gtest/gtest.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/lexical_cast.hpp>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <sstream>

#include "libvarrow/stream/AutoCreateDirFileStream.h"
#include "libvarrow/stream/FastStringStream.h"
#include "libvarrow/stream/StringIndent.h"
#include "libvarrow/time/time_range.h"
#include "support/TemporaryDirectory.h"

namespace {

using namespace libvarrow;

template <class T>
std::string text(const T& value) {
  FastStringStream stream;
  stream << value;
  return stream.str();
}

TEST(FastStringStreamTest, ValuesOfEveryTypeAreAppended) {
  FastStringStream stream;
  stream << "a" << 1 << true << -2;
  EXPECT_EQ("a1true-2", stream.str());
  stream.str() = "x";
  stream << 'c' << static_cast<signed char>('d') << static_cast<unsigned char>('e') << false
         << std::string("\0y", 2) << static_cast<short>(-7);
  EXPECT_EQ(std::string("xcdefalse\0y-7", 13), stream.str());
  EXPECT_EQ("-9223372036854775808", text(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ("18446744073709551615", text(std::numeric_limits<unsigned long long>::max()));
  EXPECT_EQ("4294967295", text(std::numeric_limits<unsigned>::max()));
  const boost::posix_time::ptime time(boost::gregorian::date(2024, 3, 5),
                                      boost::posix_time::hours(7));
  EXPECT_EQ(time2str(time), text(time));
  EXPECT_EQ(time2str(time.date()), text(time.date()));
  EXPECT_EQ(time2str(time.time_of_day()), text(time.time_of_day()));
}

template <class T, class Bits>
void expectLexicalCastDigits(int count) {
  std::mt19937_64 random(3);
  std::vector<T> values = {0,
                           T(-0.0),
                           1,
                           T(0.1),
                           T(7.25),
                           T(1e15),
                           T(1e16),
                           T(1e17),
                           T(123456789),
                           std::numeric_limits<T>::max(),
                           std::numeric_limits<T>::denorm_min(),
                           std::numeric_limits<T>::infinity(),
                           -std::numeric_limits<T>::infinity(),
                           std::numeric_limits<T>::quiet_NaN()};
  for (int i = 0; i < count; ++i) {
    const Bits bits = static_cast<Bits>(random());
    T value;
    std::memcpy(&value, &bits, sizeof value);
    values.push_back(value);
    values.push_back(static_cast<T>(static_cast<double>(random() % 10000000) / 100));
  }
  for (const T value : values) {
    EXPECT_EQ(boost::lexical_cast<std::string>(value), text(value));
  }
}

TEST(FastStringStreamTest, FloatingPointDigitsAreThoseOfLexicalCast) {
  expectLexicalCastDigits<float, std::uint32_t>(20000);
  expectLexicalCastDigits<double, std::uint64_t>(20000);
  std::mt19937_64 random(5);
  for (int i = 0; i < 2000; ++i) {
    const long double value =
        static_cast<long double>(random()) / static_cast<long double>(random());
    EXPECT_EQ(boost::lexical_cast<std::string>(value), text(value));
  }
}

TEST(FastStringStreamTest, NumbersAreTheSameUnderALocaleWithDecimalComma) {
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Comma));
  FastStringStream stream;
  stream << 1.5f << ' ' << 1.5 << ' ' << 1234567.25L << ' ' << 1000000;
  std::locale::global(before);
  EXPECT_EQ("1.5 1.5 1234567.25 1000000", stream.str());
}

TEST(StringIndentTest, IndentsGrowAsCopies) {
  const StringIndent two(2, '-');
  std::ostringstream out;
  out << two.addIndent(1) << '|' << two << '|' << two.addIndent(0) << '|' << StringIndent() << '|'
      << StringIndent().addIndent(3);
  EXPECT_EQ("---|--|--||   ", out.str());
}

class AutoCreateDirFileStreamTest : public test_support::InTemporaryDirectory {};

TEST_F(AutoCreateDirFileStreamTest, TheFolderIsMadeAndTheFileTruncated) {
  test_support::writeFile("a/b/c.txt", "something longer");
  AutoCreateDirFileStream("a/b/c.txt") << "short";
  EXPECT_EQ("short", test_support::readFile("a/b/c.txt"));
  AutoCreateDirFileStream("x/y/z.txt") << 1;
  EXPECT_EQ("1", test_support::readFile("x/y/z.txt"));
  AutoCreateDirFileStream("bare.txt") << 2;
  EXPECT_EQ("2", test_support::readFile("bare.txt"));
  AutoCreateDirFileStream moved("first.txt");
  moved = AutoCreateDirFileStream("second.txt");
  moved << 3 << std::flush;
  EXPECT_EQ("3", test_support::readFile("second.txt"));
}

TEST_F(AutoCreateDirFileStreamTest, AFileWhereAFolderBelongsGivesAFailedStream) {
  test_support::writeFile("file", "");
  testing::internal::CaptureStderr();
  AutoCreateDirFileStream stream("file/sub/x.txt");
  const std::string log = testing::internal::GetCapturedStderr();
  EXPECT_FALSE(stream.is_open());
  EXPECT_EQ(0u, log.find("path:file/sub/x.txt\npath_is_floder: 0\nexception:"));
}

}  // namespace
