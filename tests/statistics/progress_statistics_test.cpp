// How far a computation has come.
#include "libvarrow/statistics/ProgressStatistics.h"

#include <boost/make_shared.hpp>
#include "support/support.h"

namespace {

using namespace libvarrow;

struct At : ProgressStatistics {
  explicit At(std::uint64_t value) : percent(value) {}
  std::uint64_t getProcessPercent() const override { return percent; }
  std::uint64_t percent;
};

std::vector<boost::shared_ptr<ProgressStatistics>> children(
    std::initializer_list<std::uint64_t> percents) {
  std::vector<boost::shared_ptr<ProgressStatistics>> made;
  for (const std::uint64_t percent : percents) made.push_back(boost::make_shared<At>(percent));
  return made;
}

TEST(ProgressStatisticsTest, StepsGiveWholePercentsRoundedDown) {
  SimpleProgressStatistics progress(3);
  progress.inc();
  progress.inc();
  EXPECT_EQ(66u, progress.getProcessPercent());
  EXPECT_EQ("2/3;66.6667%", progress.toJsonValue4Bind().asString());
  progress.inc(2);
  EXPECT_EQ(133u, progress.getProcessPercent());
}

TEST(ProgressStatisticsTest, AComposedProgressCountsFinishedChildrenOnly) {
  EXPECT_EQ(66u, ComposedProgressStatistics(children({100, 100, 99})).getProcessPercent());
  EXPECT_EQ(100u, ComposedProgressStatistics(children({100, 120})).getProcessPercent());
  auto nested = children({100});
  nested.push_back(boost::make_shared<ComposedProgressStatistics>(children({100})));
  EXPECT_EQ(100u, ComposedProgressStatistics(nested).getProcessPercent());
}

TEST(ProgressStatisticsTest, NothingToDoIsAFault) {
  const std::pair<const char*, std::function<void()>> faults[] = {
      {"'total() != 0' is false", [] { SimpleProgressStatistics(0).getProcessPercent(); }},
      {"'!children_.empty()' is false", [] { ComposedProgressStatistics({}).toJsonValue4Bind(); }},
      {"'px != 0' is false", [] { ComposedProgressStatistics({nullptr}).getProcessPercent(); }},
      {"BackTraceException", [] { At(1).fromJsonValue4Bind(Json::Value()); }}};
  for (const auto& [report, call] : faults) {
    test_support::expectAbort(report, call);
  }
}

}  // namespace
