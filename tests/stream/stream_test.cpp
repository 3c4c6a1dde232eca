// The string builder, indentation, and the stream that creates its folder.

#include <algorithm>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/lexical_cast.hpp>
#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <sstream>

#include "libvarrow/stream/AutoCreateDirFileStream.h"
#include "libvarrow/stream/FastStringStream.h"
#include "libvarrow/stream/StringIndent.h"
#include "support/CommaLocale.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;

TEST(FastStringStreamTest, ValuesOfEveryTypeAreAppendedUnderAnyLocale) {
  const auto noon = boost::posix_time::time_from_string("2024-03-05 12:00:00");
  const CommaLocale comma;
  FastStringStream stream;
  stream.str() = "x";
  stream << 'c' << static_cast<signed char>('d') << static_cast<unsigned char>('e') << true << false
         << static_cast<short>(-7) << std::string("\0y ", 3) << INT64_MIN << " " << ULLONG_MAX
         << ' ' << 4294967295u << ' ' << 1.5f << ' ' << 1234.5 << ' ' << 1234567.25L << ' ' << noon
         << ' ' << noon.date() << ' ' << noon.time_of_day();
  EXPECT_EQ("xcdetruefalse-7" + std::string("\0y ", 3) +
                "-9223372036854775808 18446744073709551615 4294967295 1.5 1234.5 1234567.25 "
                "2024-03-05 12:00:00 2024-03-05 12:00:00",
            stream.str());
}

template <class T>
void expectDigitsOfLexicalCast() {
  using Limits = std::numeric_limits<T>;
  std::vector<T> values = {Limits::max(), Limits::denorm_min(), -Limits::infinity(),
                           Limits::quiet_NaN(), -Limits::quiet_NaN()};
  for (const double value : {0., -0., 1., 0.1, 1e15, 1e16, 1e17}) values.push_back(T(value));
  std::mt19937_64 random(3);
  std::uniform_int_distribution<> exponent(Limits::min_exponent - 96, Limits::max_exponent - 64);
  for (int i = 0; i < 20000; ++i) {
    const auto mantissa = static_cast<T>(static_cast<std::int64_t>(random()));
    values.push_back(std::ldexp(mantissa, exponent(random)));
    values.push_back(static_cast<T>(random() % 10000000) / 100);
  }
  for (const T value : values) {
    FastStringStream stream;
    stream << value;
    auto digits = boost::lexical_cast<std::string>(value);
    std::replace(digits.begin(), digits.end(), ',', '.');  // the locale of the C library
    EXPECT_EQ(digits, stream.str());
  }
}

TEST(FastStringStreamTest, FloatingPointDigitsEqualThoseOfLexicalCast) {
  expectDigitsOfLexicalCast<float>();
  expectDigitsOfLexicalCast<double>();
  // The C library of mingw-w64 writes long doubles as doubles for lexical_cast.
  const bool isLong =
      boost::lexical_cast<std::string>(0.1L) != boost::lexical_cast<std::string>(0.1);
  if (isLong) expectDigitsOfLexicalCast<long double>();
}

TEST(StringIndentTest, IndentsGrowAsCopies) {
  const StringIndent two(2, '-');
  std::ostringstream out;
  out << two.addIndent(1) << '|' << two << '|' << StringIndent().addIndent(3);
  EXPECT_EQ("---|--|   ", out.str());
}

class AutoCreateDirFileStreamTest : public InTemporaryDirectory {};

TEST_F(AutoCreateDirFileStreamTest, CreatesTheFolderAndTruncatesTheFile) {
  AutoCreateDirFileStream("a/b/c.txt") << "something longer";
  AutoCreateDirFileStream stream("a/b/c.txt");
  stream = AutoCreateDirFileStream("bare.txt");
  stream << 1 << std::flush;
  EXPECT_EQ("", readFile("a/b/c.txt"));
  EXPECT_EQ("1", readFile("bare.txt"));
  // The path needs a folder, but a file has its name.
  testing::internal::CaptureStderr();
  EXPECT_FALSE(AutoCreateDirFileStream("bare.txt/sub/x.txt").is_open());
  EXPECT_TRUE(contains(testing::internal::GetCapturedStderr(), "path_is_floder: 0\nexception:"));
}

TEST_F(AutoCreateDirFileStreamTest, NewExistingAndRemovedFoldersMayFollowOneAnother) {
  const auto write = [](const std::string& path) { AutoCreateDirFileStream(path) << path; };
  for (const char* path : {"1/x", "2/x", "2/y", "bare", "1/y", "3/deep/x", "3/deep/er/x", "4/x"}) {
    write(path);
    EXPECT_EQ(path, readFile(path));
  }
  boost::filesystem::remove_all("4");
  write("4/x");
  write("5/x");
  EXPECT_EQ("4/x5/x", readFile("4/x") + readFile("5/x"));
}

}  // namespace
