// Dates, times, durations and shared strings as text.
#include "cppbind/type/StringConverter.h"

#include <boost/date_time/gregorian/gregorian.hpp>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/make_shared.hpp>
#include <random>

#include "support/CommaLocale.h"
#include "support/support.h"

namespace {

using namespace cppbind;
using boost::gregorian::date;
using namespace boost::posix_time;
using namespace test_support;

// Reference model: a new stream with the facets of the date-time library.
std::stringstream streamWithFacets(const std::string& text = "") {
  auto* input = new boost::posix_time::time_input_facet("%Y-%m-%d %H:%M:%S");
  auto* output = new boost::posix_time::time_facet("%Y-%m-%d %H:%M:%S");
  input->time_duration_format("%H:%M:%S");
  output->time_duration_format("%H:%M:%S");
  const std::locale times(std::locale(std::locale::classic(), input), output);
  std::stringstream stream(text);
  stream.imbue(std::locale(times, new boost::gregorian::date_input_facet("%Y-%m-%d")));
  return stream;
}

template <class Text, class T>
void expectReadAsByFacets(const std::string& text, T expected) {
  const bool isReadable = static_cast<bool>(streamWithFacets(text) >> expected);
  const auto error = errorOf([&] { EXPECT_EQ(expected, Text::fromString(text)) << text; });
  EXPECT_EQ(isReadable, error == "no error") << text << ": " << error;
}

template <class T>
std::string writtenByFacets(const T& value) {
  std::stringstream stream = streamWithFacets();
  stream << value;
  return stream.str();
}

TEST(StringConverterTest, ReadingEqualsTheFacetsUnderAnyLocale) {
  const CommaLocale comma;
  std::vector<std::string> texts = {"",           "not-a-date-time",    "+infinity",
                                    "2023-02-29", "1399-12-31",         "1400-01-01",
                                    "100:00:00",  "9999-12-31 23:59:59"};
  // Valid texts in which one random piece of at most two characters becomes another.
  const std::string valid[] = {"2024-02-29 13:45:59", "2024-02-29", "13:45:59"};
  const std::string pieces = "0123456789-: x/.";
  std::mt19937 random(7);
  for (int i = 0; i < 4000; ++i) {
    std::string text = valid[i % 3];
    text.replace(random() % text.size(), random() % 3, pieces, random() % 16, random() % 3);
    texts.push_back(text);
  }
  for (const std::string& text : texts) {
    expectReadAsByFacets<BoostPTimeText>(text, ptime());
    expectReadAsByFacets<BoostGDateText>(text, date());
    expectReadAsByFacets<BoostTimeDurationText>(text, time_duration());
  }
}

TEST(StringConverterTest, WritingEqualsTheFacetsUnderAnyLocale) {
  namespace special_time = boost::date_time;
  const CommaLocale comma;
  const special_time::special_values special[] = {
      special_time::not_a_date_time, special_time::pos_infin, special_time::neg_infin,
      special_time::min_date_time, special_time::max_date_time};
  std::mt19937_64 random(11);
  for (std::size_t i = 0; i < 500; ++i) {
    const date day =
        date(1400, 1, 1) + boost::gregorian::days(static_cast<long>(random() % 3000000));
    const ptime time = i < 5 ? ptime(special[i]) : ptime(day, microseconds(random() % 86400000000));
    EXPECT_EQ(writtenByFacets(time), BoostPTimeText::toString(time));
    EXPECT_EQ(to_iso_extended_string(time.date()), BoostGDateText::toString(time.date()));
    const time_duration length =
        microseconds(static_cast<long>(random() % 700000000000) - 350000000000);
    EXPECT_EQ(writtenByFacets(length), BoostTimeDurationText::toString(length));
  }
}

TEST(StringConverterTest, InvalidTextAndOtherTypesAreRejected) {
  const auto errorIn = [](const char* text, const StringConverter& converter) {
    return errorOf([&] { converter.fromString(text); });
  };
  EXPECT_EQ("cant not parse [2024-02-30] as date", errorIn("2024-02-30", BoostGDateConverter()));
  EXPECT_EQ("cant not parse [x] as duration", errorIn("x", BoostTimeDurationConverter()));
  // After the last time that can be written.
  EXPECT_EQ("cant not parse [9999-12-31 99:99:99] as time",
            errorIn("9999-12-31 99:99:99", BoostPTimeConverter()));
  EXPECT_EQ("%a\n", StringPtrConverter().toString(boost::make_shared<std::string>("%a\n")));
  EXPECT_THROW(StringPtrConverter().toString(5), boost::bad_any_cast);
}

}  // namespace
