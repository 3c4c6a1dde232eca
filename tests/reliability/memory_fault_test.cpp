// When memory runs out, each call does all of its work or nothing.
#include <boost/filesystem/operations.hpp>
#include <memory>
#include <new>

#include "cppbind/Assert.h"
#include "libvarrow/backtrace/Check.h"
#include "libvarrow/module/ModuleLoader.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "libvarrow/time/Timeline.h"
#include "libvarrow/utility/DllManager.h"
#include "libvarrow/utility/RegistersManager.h"
#include "libvarrow/utility/UTFConverter.h"
#include "reliability/failing_new.h"
#include "support/blocks.h"
#include "support/environment.h"
#include "support/support.h"

namespace {

using namespace libvarrow;
using namespace test_support;

class MemoryFaultTest : public InTemporaryDirectory {
 protected:
  // Expects that a failed `attempt` leaves the `state` that `restore` sets.
  static void expectAllOrNothing(const char* what, const std::function<void()>& attempt,
                                 const std::function<std::string()>& state,
                                 const std::function<void()>& restore) {
    restore();
    const std::string before = state();
    attempt();
    const std::string after = state();
    restore();
    const auto failures = failEachAllocation(attempt, [&](bool isDone) {
      EXPECT_EQ(isDone ? after : before, state()) << what;
      restore();
    });
    EXPECT_GT(failures, 0U) << what;
  }
};

TEST_F(MemoryFaultTest, AFailedCheckIsReportedAndEndsTheProcess) {
  const auto survived = [](bool) { endQuickly(); };
  expectAbort("Assertion `2 < 1' failed",
              [&] { failEachAllocation([] { CPPBIND_ASSERT(2 < 1); }, survived); });
  expectAbort("Expression '2 < 1' is false",
              [&] { failEachAllocation([] { LIBVARROW_CHECK(2 < 1); }, survived); });
}

TEST_F(MemoryFaultTest, FilesAndRegistersAreCompleteOrUnchanged) {
  Json::Value info;
  for (int i = 0; i < 30; ++i) info.append("a text too long for the string itself");
  StatisticsContainer statistics("run");
  statistics.getJsonStatistics("orders", info);
  expectAllOrNothing(
      "a timed dump",
      [&] {
        { const TimedStatDumper dumper(&statistics, "stat.json"); }
        if (boost::filesystem::file_size("stat.json") == 3) throw std::bad_alloc();  // still old
      },
      [] { return readFile("stat.json"); }, [] { writeFile("stat.json", "old"); });
  const std::string name(100, 'r');
  expectAllOrNothing(
      "a register", [&] { RegistersManager::createRegister(name); },
      [&] { return RegistersManager::getRegister(name) != nullptr ? "made" : "none"; },
      [&] {
        RegistersManager::unregisterAllOf(boost::make_shared<cppbind::LoadedCode>());
        EXPECT_FALSE(RegistersManager::unregister(name, "None"));
      });
}

TEST_F(MemoryFaultTest, ConversionsAndLoadedFilesAreCompleteOrUnchanged) {
  const std::string invalid = std::string(100, 'x') + "\xFF \xE5\xB0\x8F";
  writeFile("text.txt", invalid);
  writeFile("pipeline.json", R"({"named_modules": {"first": {"ChainedModule": {"modules": []}}},
                                 "chained_module": ["first", "first"]})");
  const std::pair<const char*, std::function<std::string()>> readers[] = {
      {"fromUtf8", [&] { return utility::fromUtf8(invalid); }},
      {"fromUtf8 of a temporary text", [&] { return utility::fromUtf8(std::string(invalid)); }},
      {"toUtf8", [&] { return utility::toUtf8(invalid); }},
      {"a file", [] { return utility::readUTF8File("text.txt"); }}};
  std::string text;
  for (const auto& [name, read] : readers) {
    expectAllOrNothing(
        name, [&, call = read] { text = call(); }, [&] { return text; }, [&] { text = "old"; });
  }
  std::unique_ptr<ModuleLoader> loader;
  expectAllOrNothing(
      "a pipeline", [&] { loader->loadFile("pipeline.json"); },
      [&] {
        return loader->mainModule() == nullptr ? "none"
                                               : std::to_string(loader->namedModules().size());
      },
      [&] { loader = std::make_unique<ModuleLoader>(); });
}

TEST_F(MemoryFaultTest, APlugInIsLoadedOrLoadsAtTheNextCall) {
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "a sanitized static object of the plug-in terminates when its memory fails";
#endif
  std::unique_ptr<DllManager> manager;
  const auto load = [&] { manager->findOrCreateDll("good", PLUGINS); };
  expectAllOrNothing(
      "a plug-in", load,
      [&] {
        const auto* classes = RegistersManager::getRegister("plug-ins");
        return std::to_string(manager->findDll("good") != nullptr) +
               std::to_string(classes != nullptr && !classes->empty());
      },
      [&] {
        if (manager) load();
        manager = std::make_unique<DllManager>();
      });
}

TEST_F(MemoryFaultTest, AChangeOfABlockIsCompleteOrHasNoEffect) {
  const TimeBlock day = blockOf({slot(8, 20)});
  const TimeBlock week = blockOf({slot(8, 20), slot(30, 40), slot(50, 60)});
  const TimeBlock unordered = blockOf({slot(30, 40), slot(8, 20), slot(50, 35)});
  const TimeBlock two = blockOf({slot(1, 2), slot(25, 26)});
  const TimeBlock cuts = blockOf({slot(10, 11), slot(12, 13), slot(14, 15)});
  const TimeBlock overlapping =
      blockOf({slot(33, 36), slot(10, 12), slot(11, 13), slot(52, 53), slot(54, 55)});
  struct Case {
    const char* what;
    const TimeBlock& before;
    std::function<void(TimeBlock&)> change;
  };
  const Case cases[] = {
      {"add", week, [](TimeBlock& b) { b.addTimeBlock(at(22), at(23)); }},
      {"append", week, [](TimeBlock& b) { b.addTimeBlock(at(70), at(71)); }},
      {"add few", day, [&](TimeBlock& b) { b.addTimeBlocks(two); }},
      {"add to unordered", unordered, [&](TimeBlock& b) { b.addTimeBlocks(two); }},
      {"add many", week, [&](TimeBlock& b) { b.addTimeBlocks(overlapping); }},
      {"cut", week, [](TimeBlock& b) { b.removeTimeBlock(at(10), at(11)); }},
      {"cut unordered", unordered, [](TimeBlock& b) { b.removeTimeBlock(at(10), at(11)); }},
      {"cut few", day, [&](TimeBlock& b) { b.removeTimeBlock(cuts); }},
      {"cut many", week, [&](TimeBlock& b) { b.removeTimeBlock(overlapping); }},
      {"cut many of unordered", unordered, [&](TimeBlock& b) { b.removeTimeBlock(overlapping); }},
      {"assign", two, [&](TimeBlock& b) { b = week; }}};
  for (const Case& c : cases) {
    TimeBlock block;
    expectAllOrNothing(
        c.what, [&] { c.change(block); }, [&] { return block.dumpAsString(); },
        [&] { block = TimeBlock(c.before); });  // a copy has no spare capacity
  }
}

TEST_F(MemoryFaultTest, AChangeOfATimelineIsCompleteOrHasNoEffect) {
  Timeline full;  // two full chunks
  for (int i = 0; i < 256; ++i) full.addTimeBlock(at(2 * i), at(2 * i + 1));
  const Timeline none;
  struct Case {
    const char* what;
    const Timeline& before;
    std::function<void(Timeline&)> change;
  };
  const Case cases[] = {{"first", none, [](Timeline& t) { t.addTimeBlock(at(1), at(2)); }},
                        {"add", full, [](Timeline& t) { t.addTimeBlock(at(101.2), at(101.4)); }},
                        {"append", full, [](Timeline& t) { t.addTimeBlock(at(600), at(601)); }},
                        {"cut the last slot of a chunk", full,
                         [](Timeline& t) { t.removeTimeBlock(at(254.2), at(254.4)); }}};
  for (const Case& c : cases) {
    Timeline timeline;
    expectAllOrNothing(
        c.what, [&] { c.change(timeline); }, [&] { return timeline.toTimeBlock().dumpAsString(); },
        [&] { timeline = Timeline(c.before); });
  }
}

}  // namespace
