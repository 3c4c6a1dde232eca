// The local search: its graph and moves, and the module.
#include <libvarrow/module/RunObserver.h>

#include <chrono>
#include <limits>
#include <memory>
#include <random>
#include <set>

#include "JobShopData.h"
#include "improve/moves.h"
#include "modules/Improve.h"
#include "schedule/ScheduleText.h"
#include "shop_fixtures.h"

namespace jobshop_test {
namespace {

// Jobs may visit a machine again, even at once; every fourth operation takes no time.
Instance mixedInstance(std::size_t jobs, std::size_t machines, std::mt19937_64& random) {
  Instance instance = {"mixed", machines, {}};
  instance.jobs.assign(jobs, std::vector<Operation>(machines));
  for (auto& job : instance.jobs) {
    for (Operation& operation : job) {
      const Time duration = random() % 4 == 0 ? 0 : 1 + static_cast<Time>(random() % 20);
      operation = {random() % machines, duration};
    }
  }
  return instance;
}

// Returns the schedule in which all operations start as early as their places in `order` allow.
Schedule builtFromScratch(const Instance& instance, const OperationOrder& order) {
  std::vector<ScheduledOperation> operations;
  for (std::size_t job = 0; job < instance.jobs.size(); ++job) {
    for (std::size_t i = 0; i < instance.jobs[job].size(); ++i) {
      operations.push_back({job, i, instance.jobs[job][i].machine, 0, 0});
    }
  }
  std::vector<Time> jobReady(instance.jobs.size());
  std::vector<Time> machineFree(instance.machineCount);
  for (const OperationId id : order) {
    ScheduledOperation& operation = operations[id - 1];
    Time& ready = jobReady[operation.job];
    Time& free = machineFree[operation.machine];
    operation.start = std::max(ready, free);
    operation.end = operation.start + instance.jobs[operation.job][operation.position].duration;
    ready = free = operation.end;
  }
  return {operations, ""};
}

/// Finds the shortest makespan by trying all orders.
class AllOrders {
 public:
  explicit AllOrders(const Instance& instance)
      : instance_(instance),
        positions_(instance.jobs.size()),
        jobReady_(instance.jobs.size()),
        machineFree_(instance.machineCount) {
    extend(0);
  }

  Time shortest() const { return shortest_; }

 private:
  void extend(Time makespan) {
    if (makespan >= shortest_) return;
    bool isComplete = true;
    for (std::size_t job = 0; job < positions_.size(); ++job) {
      if (positions_[job] == instance_.jobs[job].size()) continue;
      isComplete = false;
      const Operation& operation = instance_.jobs[job][positions_[job]++];
      const Time ready = jobReady_[job];
      const Time free = machineFree_[operation.machine];
      const Time end = std::max(ready, free) + operation.duration;
      jobReady_[job] = machineFree_[operation.machine] = end;
      extend(std::max(makespan, end));
      jobReady_[job] = ready;
      machineFree_[operation.machine] = free;
      --positions_[job];
    }
    if (isComplete) shortest_ = makespan;
  }

  const Instance& instance_;
  std::vector<std::size_t> positions_;  // of the next operation of each job
  std::vector<Time> jobReady_;
  std::vector<Time> machineFree_;
  Time shortest_ = std::numeric_limits<Time>::max();
};

std::vector<OperationId> reordered(const ShopGraph& graph, const Move& move) {
  std::vector<OperationId> operations = {move.moved};
  while (operations.back() != move.target) {
    const Vertex& vertex = graph[operations.back()];
    operations.push_back(move.isForward ? vertex.machineAfter : vertex.machineBefore);
  }
  return operations;
}

// Applies a move and compares the graph with a schedule built from scratch, and the estimate with
// the longest path through the operations that the move reorders.
void expectExactMove(const Instance& instance, ShopGraph& graph, const Move& move) {
  const Time before = graph.makespan();
  const Time estimate = MoveEstimator(graph).estimate(move);
  const std::vector<OperationId> operations = reordered(graph, move);
  graph.apply(move);

  const Schedule schedule = builtFromScratch(instance, graph.order());
  ASSERT_EQ(std::vector<std::string>(), findViolations(instance, {graph.schedule(), ""}));
  ASSERT_EQ(scheduleCsv(schedule, {}, {}), scheduleCsv({graph.schedule(), ""}, {}, {}));
  ASSERT_EQ(schedule.makespan(), graph.makespan());
  Time through = 0;
  for (const OperationId id : operations) {
    through = std::max(through, graph[id].head + graph[id].tail);
  }
  ASSERT_LE(through, estimate);
  if (operations.size() == 2) {
    ASSERT_EQ(through, estimate);
  }
  ASSERT_LE(graph.makespan(), std::max(before, estimate));
}

TEST(Improving, EveryMoveGivesTheScheduleBuiltFromScratchAndKeepsItsEstimate) {
  std::mt19937_64 random(1);
  int insertions = 0;
  for (int shop = 0; shop < 20; ++shop) {
    const std::size_t jobs = 6 + random() % 7;
    const Instance instance = mixedInstance(jobs, 4 + random() % 5, random);
    ShopGraph graph(instance);
    const Schedule start = planned(instance, "SPT");
    graph.setSchedule(start.operations);
    for (int done = 0; done < 500; ++done) {
      std::vector<Move> moves = blockMoves(graph, criticalPath(graph, random));
      if (moves.empty()) {
        graph.setSchedule(start.operations);
        moves = blockMoves(graph, criticalPath(graph, random));
      }
      ASSERT_FALSE(moves.empty());
      const Move move = moves[random() % moves.size()];
      insertions += reordered(graph, move).size() > 2;
      expectExactMove(instance, graph, move);
      if (HasFatalFailure()) FAIL() << "shop " << shop << ", move " << done;
    }
  }
  EXPECT_LT(1000, insertions);
}

class Improvement : public ::testing::Test {
 protected:
  static Instance shipped(const std::string& name) {
    return readInstance(JOBSHOP_FOLDER "/data/" + name + ".txt");
  }

  void plan(const Instance& instance) {
    shop.setInstance(instance);
    shop.setSchedule(planned(instance, "MWKR"));
  }

  // Returns the error of the module.
  std::string improve(const std::string& keys) {
    statistics = std::make_unique<libvarrow::StatisticsContainer>("test");
    shop.statisticsContainer = statistics.get();
    return errorOf([&] {
      Improve module;
      cppbind::JsonDecodeBinder().decode(json(keys), module);
      module.processImp(&shop);
    });
  }

  void expectFeasible() const {
    EXPECT_EQ(std::vector<std::string>(), findViolations(shop.instance(), shop.schedule()));
  }

  // Returns a statistic of the last run of the module.
  Json::Value recorded(const char* name) const {
    const Json::Value all = statistics->toJsonValue4Bind();
    for (const Json::Value& entry : all["test"]) {
      if (entry.isMember(name)) return entry[name];
    }
    return {};
  }

  JobShopData shop;
  std::unique_ptr<libvarrow::StatisticsContainer> statistics;
};

TEST_F(Improvement, FindsGoodSchedulesOfTheShippedInstances) {
  const std::tuple<const char*, const char*, Time, Time> cases[] = {
      {"ft06", "20000", 55, 55},   {"ft10", "100000", 930, 948}, {"ft20", "20000", 1165, 1165},
      {"la01", "20000", 666, 666}, {"la02", "20000", 655, 655},  {"la03", "20000", 597, 597},
      {"la04", "20000", 590, 590}, {"la05", "20000", 593, 593}};
  for (const auto& [name, iterations, optimum, limit] : cases) {
    plan(shipped(name));
    EXPECT_EQ("no error", improve(std::string(R"({"iterations": )") + iterations + "}"));
    expectFeasible();
    EXPECT_LE(optimum, shop.schedule().makespan()) << name;
    EXPECT_GE(limit, shop.schedule().makespan()) << name;
  }
}

TEST_F(Improvement, FindsTheOptimumOfSmallShopsWithRepeatedVisits) {
  std::mt19937_64 random(2);
  int improved = 0;
  for (int i = 0; i < 50; ++i) {
    plan(mixedInstance(4, 3, random));
    const Time start = shop.schedule().makespan();
    EXPECT_EQ("no error", improve(R"({"iterations": 300})"));
    expectFeasible();
    EXPECT_EQ(AllOrders(shop.instance()).shortest(), shop.schedule().makespan()) << "shop " << i;
    improved += shop.schedule().makespan() < start;
  }
  EXPECT_LT(10, improved);
}

TEST_F(Improvement, IsTheSameInEveryRunWithTheSameKeys) {
  plan(shipped("ft10"));
  const Schedule start = shop.schedule();
  std::set<std::string> results;
  for (const char* keys : {R"({"iterations": 2000})", R"({"iterations": 2000, "seed": 1})",
                           R"({"iterations": 2000, "seed": 2})"}) {
    shop.setSchedule(start);
    EXPECT_EQ("no error", improve(keys));
    results.insert(shop.schedule().origin + scheduleCsv(shop.schedule(), {}, {}));
  }
  EXPECT_EQ(2u, results.size());
}

TEST_F(Improvement, EndsAtTheTimeLimitAndRecordsTheTimeOfEachImprovement) {
  std::mt19937_64 random(3);
  plan(mixedInstance(40, 40, random));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ("no error", improve(R"({"iterations": 2000000, "time_limit": "00:00:01"})"));
  const auto taken = std::chrono::steady_clock::now() - begin;
  EXPECT_LE(std::chrono::seconds(1), taken);
  EXPECT_GT(2000000, recorded("iterations").asInt());
  EXPECT_EQ("100/100;100%", recorded("search").asString());
  const Json::Value improvements = recorded("improvements");
  const Json::Value& last = improvements[improvements.size() - 1];
  EXPECT_EQ(shop.schedule().makespan(), last["makespan"].asInt64());
  EXPECT_LT(0, last["milliseconds"].asInt64());
  EXPECT_LE(std::chrono::milliseconds(last["milliseconds"].asInt64()), taken);
}

// Ends the run after some questions.
struct Impatient : libvarrow::RunObserver {
  bool isEndRequested() const noexcept override { return ++questions > 3000; }
  mutable int questions = 0;
};

TEST_F(Improvement, KeepsTheBestScheduleWhenTheRunEnds) {
  Impatient observer;
  shop.setObserver(&observer);
  plan(shipped("ft10"));
  const Time start = shop.schedule().makespan();
  EXPECT_EQ("no error", improve(R"({"iterations": 1000000000000})"));
  expectFeasible();
  EXPECT_EQ(3000, recorded("iterations").asInt());
  const Json::Value improvements = recorded("improvements");
  EXPECT_EQ(start, improvements[0]["makespan"].asInt64());
  const Json::Value& last = improvements[improvements.size() - 1];
  EXPECT_EQ(shop.schedule().makespan(), last["makespan"].asInt64());
  EXPECT_EQ("MWKR, iteration " + last["iteration"].asString(), shop.schedule().origin);
  EXPECT_EQ("0/100;0%", recorded("search").asString());
}

TEST_F(Improvement, RefusesWhatItCannotPlan) {
  EXPECT_EQ("no schedule: Dispatch must run before this module", improve("{}"));
  plan(shipped("ft06"));
  Schedule broken = shop.schedule();
  broken.operations.pop_back();
  shop.setSchedule(broken);
  EXPECT_TRUE(contains(improve("{}"), "Improve needs a feasible schedule: operation 5 of job"));
  shop.setCalendar(calendarFrom(kEarlyShift, 6));
  shop.setSchedule(planned(shop.instance(), "SPT", shop.calendar()));
  EXPECT_EQ("Improve cannot plan with calendars: remove Improve or SetCalendars", improve("{}"));
}

}  // namespace
}  // namespace jobshop_test
