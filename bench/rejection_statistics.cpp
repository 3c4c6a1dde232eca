// Recording of rejected candidates: RejectionStatistics, whose peer is a DistributionStatistics
// with as many keys.
#include <benchmark/benchmark.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

#include "allocations.h"
#include "libvarrow/statistics/RejectionStatistics.h"

namespace bench {

namespace {

struct Rejection {
  std::string subject, candidate, reason;
  boost::posix_time::time_duration shortBy;
};

std::vector<Rejection> rejections(unsigned pairCount) {
  constexpr std::size_t kCount = 8192;
  constexpr unsigned kReasons = 10;
  std::mt19937 random(4);
  std::vector<Rejection> list;
  while (list.size() < kCount) {
    const auto pair = static_cast<unsigned>(random() % pairCount);
    list.push_back({"operation-" + std::to_string(pair / kReasons),
                    "machine-" + std::to_string(random() % 100) + " 2024-03-04 07:00",
                    "reason number " + std::to_string(pair % kReasons),
                    boost::posix_time::seconds(random() % 86400)});
  }
  return list;
}

/// The number of different pairs is the benchmark's argument.
void reject(benchmark::State& state) {
  const std::vector<Rejection> list = rejections(static_cast<unsigned>(state.range(0)));
  libvarrow::RejectionStatistics statistic;
  const auto record = [&](const Rejection& each) {
    statistic.rejected(each.subject, each.candidate, each.reason, each.shortBy);
  };
  for (const Rejection& each : list) record(each);
  const AllocationCounter counted(state);
  std::size_t at = 0;
  for (auto _ : state) {
    record(list[at]);
    if (++at == list.size()) at = 0;
  }
}

BENCHMARK(reject)->Name("rejection/statistic")->Arg(8)->Arg(1000);

}  // namespace

}  // namespace bench
