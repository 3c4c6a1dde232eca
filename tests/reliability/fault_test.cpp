// The example, while one allocation or one system call fails: it loses nothing silently, except
// files whose writers are documented to be silent.
#include <unistd.h>

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/filesystem/operations.hpp>
#include <cstdlib>
#include <map>
#include <regex>
#include <set>

#include "support/support.h"

namespace {

using namespace test_support;
namespace fs = boost::filesystem;

using Files = std::map<std::string, std::string>;

constexpr const char* kStatistics = "./run/statistics.json";
constexpr const char* kPipeline = R"({"modules": [
  {"ReadInstance": {"file": "ft06.txt"}},
  {"SetCalendars": {"start": "2024-03-01 06:00:00",
    "shifts": [{"from": "06:00:00", "to": "14:00:00"}],
    "breaks": [{"from": "10:00:00", "to": "10:30:00"}]}},
  {"ChainedModule": {"modules": [{"Dispatch": {"rule": "SPT"}}]}},
  {"WriteSchedule": {}}, {"DrawGantt": {}},
  {"CheckRules": {"file": "rules_strict.json", "stop": false}},
  {"CommonModuleStatDumper": {"file": "own.json"}}]})";

// Returns the text of every file below the current directory, without times and this directory.
Files files() {
  static const std::regex times(R"(\d{4}-\d\d-\d\d[ T][0-9:.]+Z?|("minutes" : )[0-9.]+|\d+ ms)");
  const std::string here = fs::current_path().generic_string();
  Files texts;
  for (const auto& entry : fs::recursive_directory_iterator(".")) {
    if (!fs::is_regular_file(entry)) continue;
    const std::string text = boost::algorithm::replace_all_copy(readFile(entry.path()), here, "");
    texts[entry.path().string()] = std::regex_replace(text, times, "$1 0");
  }
  return texts;
}

// Returns true for a complete record of a run, as `reference` is, which has other times and
// warnings.
bool isWholeRecord(const std::string& name, const std::string& text, const std::string& reference) {
  if (name == "run.json" || name == "trace.json") return errorOf([&] { json(text); }) == "no error";
  if (name == "report.html") return boost::algorithm::ends_with(text, "</html>\n");
  const auto lines = [](const std::string& all) {
    return std::count(all.begin(), all.end(), '\n');
  };
  return name == "steps.jsonl" && lines(text) == lines(reference);
}

class FaultTest : public InTemporaryDirectory {
 protected:
  struct Run {
    ChildResult host;
    Files files;
    std::string log;
  };

  // Runs the example in a new directory.
  static Run run(const std::string& kind, unsigned long nth) {
    const std::string folder = kind + std::to_string(nth);
    fs::create_directory(folder);
    fs::current_path(folder);
    writeFile("pipeline.json", kPipeline);
    for (const std::string file : {"rules_strict.json", "data/ft06.txt"}) {
      writeFile(fs::path(file).filename(), readFile(JOBSHOP_FOLDER "/" + file));
    }
    Run done;
    done.host = runInChild([&] {
      ::unsetenv("LIBVARROW_TIMED_STAT_DUMP");
      ::setenv("LD_PRELOAD", FAILING_CALLS, 1);
      ::setenv("FAULT_KIND", kind.c_str(), 1);
      ::setenv("FAULT_CALL", std::to_string(nth).c_str(), 1);
      ::alarm(100);  // ends a host that hangs
      ::execl(JOBSHOP_PROGRAM, JOBSHOP_PROGRAM, "run", "pipeline.json", "--out", "run", nullptr);
      throw std::runtime_error("no " JOBSHOP_PROGRAM);
    });
    done.files = files();
    constexpr const char* kLog = "./run/log/run.log";
    done.log = done.files[kLog];
    done.files.erase(kLog);
    fs::current_path("..");
    fs::remove_all(folder);
    return done;
  }

  // Expects the host to name each file that a fault of the file `faulty` kept from being written.
  static void expectLossesToBeNamed(const Run& found, const Run& reference, const fs::path& faulty,
                                    const std::string& said) {
    // Their writers do not report a file that is truncated or cannot be opened.
    static const std::set<std::string> silent = {"in_info.json", "out_info.json",
                                                 "module_stat.json", "own.json"};
    for (const auto& [name, content] : reference.files) {
      const auto same = found.files.find(name);
      const std::string file = fs::path(name).filename().string();
      const bool isThere = same != found.files.end();
      if (isThere && (same->second == content || isWholeRecord(file, same->second, content))) {
        continue;
      }
      // Without its file, the logger uses its default, as output.txt says.
      const bool hasOtherLog =
          faulty.filename() == "log.conf" && found.files.count("./run/log.txt");
      const bool isSilent = hasOtherLog || (silent.count(file) > 0 && isSame(faulty, name));
      EXPECT_TRUE(isSilent || contains(said, name.substr(2))) << name << " is lost silently";
    }
  }

  // `path` is absolute or relative to "run", `name` begins with "./run/".
  static bool isSame(const fs::path& path, const std::string& name) {
    const std::string whole = fs::absolute(path, "/run").string();
    return boost::algorithm::ends_with(whole, name.substr(1));
  }

  // Returns false when no call failed, because the host made fewer calls than the reference.
  static bool expectNoSilentLoss(const std::string& kind, unsigned long nth, const Run& reference) {
    Run found = run(kind, nth);
    const std::string& errors = found.host.errors;
    SCOPED_TRACE(kind + " " + std::to_string(nth) + " " + errors + found.log);
    std::smatch fault;
    if (!std::regex_search(errors, fault, std::regex("fault: \\w+ (.*)\n"))) return false;
    const std::string said = std::string(fault.prefix()) + std::string(fault.suffix()) + found.log;
    // At worst the complete ones keep their temporary name.
    for (const char* suffix : {"", ".writing"}) {
      const std::string last = found.files[kStatistics + std::string(suffix)];
      EXPECT_TRUE(last.empty() || errorOf([&] { json(last); }) == "no error") << suffix << last;
    }
    if (found.host.exitCode == reference.host.exitCode) {
      expectLossesToBeNamed(found, reference, std::string(fault[1]), said);
    } else {
      EXPECT_TRUE(found.host.exitCode == 1 || found.host.signal == SIGABRT) << found.host.signal;
      EXPECT_NE("", said);
    }
    return true;
  }
};

TEST_F(FaultTest, NothingIsLostSilently) {
  const char* stride = std::getenv("FAULT_STRIDE");
  unsigned long points = 0;
  for (const char* kind : {"memory", "open", "read", "write", "close", "rename", "mkdir"}) {
    const Run reference = run(kind, 0);
    const std::string& errors = reference.host.errors;
    ASSERT_EQ(3, reference.host.exitCode) << errors << reference.host.output;  // rules are broken
    const unsigned long calls = std::stoul(errors.substr(errors.find("calls: ") + 7));
    const unsigned long step = stride != nullptr ? std::stoul(stride) : 1 + calls / 40;
    unsigned long failed = 0;
    for (unsigned long nth = 1; nth <= calls; nth += step) {
      failed += expectNoSilentLoss(kind, nth, reference) ? 1 : 0;
    }
    EXPECT_LT(calls / step * 9 / 10, failed) << kind;
    points += failed;
    std::cout << kind << ": " << calls << " calls, every " << step << ". failed\n";
  }
  std::cout << points << " runs\n";
}

}  // namespace
