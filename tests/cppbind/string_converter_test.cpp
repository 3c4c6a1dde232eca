// Dates, times, durations and shared strings as text.
#include "cppbind/type/StringConverter.h"

#include <gtest/gtest.h>

#include <boost/date_time/gregorian/gregorian.hpp>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/make_shared.hpp>
#include <iostream>
#include <locale>
#include <random>
#include <sstream>

#include "cppbind/ParseErrorException.h"
#include "support/ChildProcess.h"

namespace {

using namespace cppbind;
using boost::gregorian::date;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

// The date-time library's own facets, made afresh, as the reference.
template <class T>
std::istringstream& prepare(std::istringstream& in) {
  auto* times = new boost::posix_time::time_input_facet("%Y-%m-%d %H:%M:%S");
  times->time_duration_format("%H:%M:%S");
  in.imbue(std::locale(std::locale::classic(), times));
  in.imbue(std::locale(in.getloc(), new boost::gregorian::date_input_facet("%Y-%m-%d")));
  return in;
}

template <class T>
std::string outcomeByFacet(const std::string& text) {
  std::istringstream in(text);
  T value;
  if (!(prepare<T>(in) >> value)) return "fails";
  std::ostringstream out;
  out << value;
  return out.str();
}

template <class T, class Text>
std::string outcome(const std::string& text) {
  try {
    std::ostringstream out;
    out << Text::fromString(text);
    return out.str();
  } catch (const ParseErrorException&) {
    return "fails";
  }
}

std::string wordsOf(const StringConverter& converter, const std::string& text) {
  try {
    converter.fromString(text);
  } catch (const ParseErrorException& error) {
    return error.what();
  }
  return "no error";
}

TEST(StringConverterTest, ReadingGivesWhatTheFacetsGive) {
  std::vector<std::string> texts = {"2024-02-29 23:59:59",
                                    "2023-02-29 00:00:00",
                                    "2024-02-28 25:00:00",
                                    "2024-02-28 23:60:61",
                                    "2024-2-8 1:2:3",
                                    "2024-02-28 23:00:59.5",
                                    " 2024-02-28 23:00:59",
                                    "2024-02-28",
                                    "2024/02/28 23.00.00",
                                    "1399-12-31 00:00:00",
                                    "1400-01-01 00:00:00",
                                    "9999-12-31 23:59:59",
                                    "2024-13-01 00:00:00",
                                    "2024-00-10 00:00:00",
                                    "2024-01-00 00:00:00",
                                    "2024-01-01 24:00:00",
                                    "not-a-date-time",
                                    "+infinity",
                                    "2024-01-01 0a:00:00",
                                    "-024-01-01 00:00:00",
                                    "",
                                    "noon",
                                    "01:02:03",
                                    "25:61:61",
                                    "100:00:00",
                                    "-01:00:00",
                                    "2024-04-31",
                                    "2024-04-30"};
  // One character of a good text replaced at random.
  std::mt19937 random(7);
  for (int i = 0; i < 2000; ++i) {
    std::string text = i % 2 == 0 ? "2024-02-29 13:45:59" : "2024-02-29";
    text[random() % text.size()] = "0123456789-: x"[random() % 14];
    texts.push_back(text);
  }
  for (const std::string& text : texts) {
    EXPECT_EQ(outcomeByFacet<ptime>(text), (outcome<ptime, BoostPTimeText>(text))) << text;
    EXPECT_EQ(outcomeByFacet<date>(text), (outcome<date, BoostGDateText>(text))) << text;
    EXPECT_EQ(outcomeByFacet<time_duration>(text),
              (outcome<time_duration, BoostTimeDurationText>(text)))
        << text;
  }
}

TEST(StringConverterTest, WritingGivesWhatTheFacetsGive) {
  auto* facet = new boost::posix_time::time_facet("%Y-%m-%d %H:%M:%S");
  facet->time_duration_format("%H:%M:%S");
  std::ostringstream out;
  out.imbue(std::locale(std::locale::classic(), facet));
  const auto byFacet = [&out](const auto& value) {
    out.str("");
    out << value;
    return out.str();
  };
  std::mt19937_64 random(11);
  std::vector<ptime> times = {
      ptime(boost::posix_time::not_a_date_time), ptime(boost::posix_time::pos_infin),
      ptime(boost::posix_time::neg_infin), ptime(boost::posix_time::min_date_time),
      ptime(boost::posix_time::max_date_time)};
  for (int i = 0; i < 500; ++i) {
    times.emplace_back(date(1400, 1, 1) + boost::gregorian::days(random() % 3000000),
                       boost::posix_time::microseconds(random() % 86400000000));
  }
  for (const ptime& time : times) {
    EXPECT_EQ(byFacet(time), BoostPTimeText::toString(time));
    EXPECT_EQ(boost::gregorian::to_iso_extended_string(date(2024, 3, 5)),
              BoostGDateText::toString(date(2024, 3, 5)));
    const time_duration length =
        boost::posix_time::microseconds(static_cast<long>(random() % 700000000000) - 350000000000);
    EXPECT_EQ(byFacet(length), BoostTimeDurationText::toString(length));
  }
  EXPECT_EQ("125:00:01", BoostTimeDurationText::toString(time_duration(125, 0, 1)));
  EXPECT_EQ("not-a-date-time", BoostGDateText::toString(date()));
}

TEST(StringConverterTest, TimesAreTheSameUnderEveryGlobalLocale) {
  struct Grouped : std::numpunct<char> {
    std::string do_grouping() const override { return "\1"; }
  };
  const auto child = test_support::runInChild([] {
    std::locale::global(std::locale(std::locale::classic(), new Grouped));
    const ptime time = BoostPTimeText::fromString("2024/03/05 07:08:09");
    std::cout << BoostPTimeText::toString(time) << BoostGDateText::toString(date());
  });
  EXPECT_EQ("2024-03-05 07:08:09not-a-date-time", child.output);
}

TEST(StringConverterTest, TextThatDoesNotParseIsNamedWithItsKind) {
  EXPECT_EQ("cant not parse [2024-02-30] as date", wordsOf(BoostGDateConverter(), "2024-02-30"));
  EXPECT_EQ("cant not parse [noon] as time", wordsOf(BoostPTimeConverter(), "noon"));
  EXPECT_EQ("cant not parse [x] as duration", wordsOf(BoostTimeDurationConverter(), "x"));
  EXPECT_EQ("cant not parse [noon] as time", wordsOf(BoostPTimeConverter(), "noon"))
      << "a failure leaves nothing behind in what is kept for reuse";
  EXPECT_EQ("no error", wordsOf(BoostPTimeConverter(), "+infinity"));
  EXPECT_EQ("cant not parse [9999-12-31 99:99:99] as time",
            wordsOf(BoostPTimeConverter(), "9999-12-31 99:99:99"))
      << "no time that could be written";
}

TEST(StringConverterTest, SharedStringsPassAsTheyAreAndOtherTypesAreRefused) {
  const StringPtrConverter converter;
  const auto text = boost::any_cast<boost::shared_ptr<std::string>>(converter.fromString("%a\n"));
  EXPECT_EQ("%a\n", *text);
  EXPECT_EQ("%a\n", converter.toString(text));
  EXPECT_THROW(converter.toString(5), boost::bad_any_cast);
}

}  // namespace
