// A host that uses the whole library while one allocation or one call of the system fails: nothing
// is lost in silence, except files whose writers are documented to be silent.
#include <unistd.h>

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

// The text of every file below the current directory, without its times.
Files files() {
  static const std::regex times(R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d|"minutes" : [0-9.]+|\d+ ms)");
  Files texts;
  for (const auto& entry : fs::recursive_directory_iterator(".")) {
    if (!fs::is_regular_file(entry)) continue;
    texts[entry.path().string()] = std::regex_replace(readFile(entry.path()), times, "T");
  }
  return texts;
}

class FaultTest : public InTemporaryDirectory {
 protected:
  struct Run {
    ChildResult host;
    Files files;
    std::string log;
  };

  // In a directory of its own.
  Run run(const std::string& kind, unsigned long nth) {
    const std::string folder = kind + std::to_string(nth);
    fs::create_directory(folder);
    fs::current_path(folder);
    writeFile("log.conf",
              "log4cplus.rootLogger=WARN, F\nlog4cplus.appender.F=log4cplus::FileAppender\n"
              "log4cplus.appender.F.File=log.txt\n");
    Run done;
    done.host = runInChild([&] {
      ::unsetenv("LIBVARROW_TIMED_STAT_DUMP");
      ::alarm(100);  // a host that hangs is ended
      ::execl(FAULT_HOST, FAULT_HOST, kind.c_str(), std::to_string(nth).c_str(), PLUGINS, nullptr);
      throw std::runtime_error("no " FAULT_HOST);
    });
    done.files = files();
    done.log = done.files["./log.txt"];
    done.files.erase("./log.txt");
    fs::current_path("..");
    fs::remove_all(folder);
    return done;
  }

  // Writers that are documented not to report a file that is cut short or cannot be opened.
  static bool isWrittenSilently(const std::string& name) {
    static const std::set<std::string> names = {"in_info.json", "out_info.json", "module_stat.json",
                                                "back.json",    "copy.json",     "log.txt"};
    return names.count(fs::path(name).filename().string()) > 0;
  }

  // A file that a fault kept from being written is named where people look.
  static void expectLossesToBeNamed(const Run& found, const Run& reference,
                                    const std::string& said) {
    for (const auto& [name, content] : reference.files) {
      const auto same = found.files.find(name);
      if (same != found.files.end() && same->second == content) continue;
      if (name == "./copy.json") continue;  // writeFileForUTF8 never tells
      EXPECT_TRUE(contains(said, name.substr(2))) << name << " is lost in silence";
    }
  }

  // The last whole statistics stay, in the worst case under their temporary name.
  static void expectWholeStatistics(Files found, const Run& reference) {
    const std::string name = "./run/statistics.json";
    const std::string whole = reference.files.at(name);
    const std::string last = found.count(name) > 0 ? found[name] : found[name + ".writing"];
    EXPECT_TRUE(last == "{\"old\" : []}\n" || last == whole) << last;
  }

  // False: no call failed, as the host made fewer of them than the reference.
  bool expectNoSilentLoss(const std::string& kind, unsigned long nth, const Run& reference) {
    const Run found = run(kind, nth);
    const std::string& errors = found.host.errors;
    SCOPED_TRACE(kind + " " + std::to_string(nth) + " " + errors + found.log);
    std::smatch fault;
    if (!std::regex_search(errors, fault, std::regex("fault: \\w+ (.*)\n"))) return false;
    const std::string said = std::string(fault.prefix()) + std::string(fault.suffix()) + found.log;
    if (contains(said, "a time at the end of a scope is not recorded")) return true;
    expectWholeStatistics(found.files, reference);
    if (found.host.exitCode == 0) {
      if (!isWrittenSilently(fault[1])) expectLossesToBeNamed(found, reference, said);
    } else {
      EXPECT_TRUE(found.host.exitCode == 1 || found.host.signal == SIGABRT) << found.host.signal;
      EXPECT_NE("", said);
    }
    return true;
  }
};

TEST_F(FaultTest, NothingIsLostInSilence) {
  const char* stride = std::getenv("FAULT_STRIDE");
  unsigned long points = 0;
  for (const char* kind : {"memory", "open", "read", "write", "close", "rename", "mkdir"}) {
    const Run reference = run(kind, 0);
    ASSERT_EQ(0, reference.host.exitCode) << reference.host.errors << reference.host.output;
    EXPECT_EQ("", reference.host.errors + reference.log);
    const std::string& output = reference.host.output;
    const unsigned long calls = std::stoul(output.substr(output.find("calls: ") + 7));
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
