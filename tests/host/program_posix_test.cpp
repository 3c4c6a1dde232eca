// A host and its system: signals, closed streams, terminals, disks.
#include <pty.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>
#include <sstream>

#include "host/program.h"

namespace host_test {
namespace {

// The small host, in a process group of its own, with its standard error on a terminal.
class Started {
 public:
  explicit Started(std::vector<std::string> arguments, const std::function<void()>& prepare = {}) {
    arguments.insert(arguments.begin(), ORDERS);
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    // A shell without job control and nohup start tests that ignore these, and so would the host.
    for (const int signal : {SIGINT, SIGQUIT, SIGHUP}) ::signal(signal, SIG_DFL);
    const winsize size{24, 40, 0, 0};
    pid_ = ::forkpty(&terminal_, nullptr, nullptr, &size);
    if (pid_ != 0) return;
    ::alarm(600);
    if (prepare) prepare();
    ::execv(ORDERS, pointers.data());
    ::_exit(127);
  }
  Started(const Started&) = delete;
  Started& operator=(const Started&) = delete;
  ~Started() {
    kill(SIGKILL);
    ::close(terminal_);
  }

  void kill(int signal) const { ::kill(pid_, signal); }
  bool isRunning() { return ::waitpid(pid_, &status_, WNOHANG) == 0; }
  // Reads the terminal until `part` was written or the process has ended.
  bool reads(const std::string& part) {
    char text[256];
    while (!contains(text_, part)) {
      const ssize_t length = ::read(terminal_, text, sizeof text);
      if (length <= 0) return false;
      text_.append(text, static_cast<std::size_t>(length));
    }
    return true;
  }
  // Waits for the end and returns the signal that ended the process, 0 for none.
  int end() {
    reads("\x1b no such text");
    ::waitpid(pid_, &status_, 0);
    EXPECT_EQ(-1, ::kill(-pid_, 0)) << "a process is left";
    return WIFSIGNALED(status_) ? WTERMSIG(status_) : 0;
  }
  const std::string& text() const { return text_; }

 private:
  pid_t pid_ = -1;
  int terminal_ = -1;
  int status_ = 0;
  std::string text_;
};

// Returns the innermost step that began and did not end, of a record whose last line may be torn.
std::string runningStep(const std::string& record) {
  std::vector<std::string> steps;
  std::istringstream lines(record.substr(0, record.rfind('\n') + 1));
  for (std::string line; std::getline(lines, line);) {
    const Json::Value event = json(line);
    if (event["event"].asString() == "begin") {
      steps.push_back(event["step"].asString());
    } else {
      EXPECT_EQ(steps.back(), event["step"].asString());
      steps.pop_back();
    }
  }
  return steps.empty() ? "" : steps.back();
}

class HostProcess : public InTemporaryDirectory {
 protected:
  const std::vector<std::string> run{"run", "p.json", "--out", "run", "--overwrite"};

  // Runs 31 steps as often as the variable says, by default 20 times. Calls `stop` at a random
  // moment, in every fourth run in the step `last`. It returns true if the run had begun.
  void atRandomMoments(const char* variable, const std::string& last,
                       const std::function<bool(Started&, int)>& stop) const {
    const char* const times = std::getenv(variable);
    std::mt19937 random(times == nullptr ? 1 : std::random_device()());
    std::string modules;
    for (int i = 0; i < 30; ++i) modules += act("print") + ", ";
    writePipeline(modules + act(last));
    int begun = 0;
    for (int i = 0; i < (times == nullptr ? 20 : std::stoi(times)); ++i) {
      Started host(run);
      EXPECT_TRUE(i % 4 != 0 || host.reads("30_Act"));
      std::this_thread::sleep_for(std::chrono::microseconds(random() % 80000));
      begun += stop(host, i) ? 1 : 0;
      if (fs::exists("run/run.json")) fs::remove_all("run");
    }
    EXPECT_LE(5, begun);
  }
};

TEST_F(HostProcess, ASignalEndsTheRunWithWholeFilesAtAnyMoment) {
  const std::pair<int, std::string> signals[] = {
      {SIGINT, "SIGINT"}, {SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"}};
  atRandomMoments("HOST_SIGNALS", "wait", [&](Started& host, int i) {
    const auto& [signal, name] = signals[i % 3];
    host.kill(signal);
    EXPECT_EQ(signal, host.end()) << host.text();
    if (!fs::exists("run/run.json")) return false;
    EXPECT_TRUE(contains(host.text(), "orders: p.json: ended by " + name)) << host.text();
    EXPECT_EQ("ended on request", outcome("run"));
    libvarrow::File2Json("run/statistics.json");
    return true;
  });
}

TEST_F(HostProcess, AKillLeavesRecordsThatNameTheStep) {
  atRandomMoments("HOST_KILLS", "hang", [](Started& host, int i) {
    host.kill(SIGKILL);
    EXPECT_EQ(SIGKILL, host.end());
    EXPECT_TRUE(fs::exists("run/run.json") || !fs::exists("run/steps.jsonl"));
    if (!fs::exists("run/run.json")) return false;
    EXPECT_EQ("running", outcome("run"));
    // The run may have ended before it opened the record. The steps themselves make their dumps.
    const bool isOpen = fs::exists("run/steps.jsonl");
    const std::string running = isOpen ? runningStep(readFile("run/steps.jsonl")) : "";
    EXPECT_TRUE(i % 4 != 0 || running == "30_Act") << running;
    const int next = running.empty() ? 31 : std::stoi(running) + 1;
    EXPECT_FALSE(fs::exists("run/dump/" + std::to_string(next) + "_Act")) << running;
    return !running.empty();
  });
}

TEST_F(HostProcess, APipeInARunFolderIsNotWaitedFor) {
  writeFile("run/run.json", R"({"libvarrow_run": 1, "outcome": "done"})");
  EXPECT_EQ(0, ::mkfifo("run/steps.jsonl", 0600));
  EXPECT_EQ(2, orders({"diff", "run", "run"}).exitCode);
  EXPECT_EQ(0, orders({"report", "run"}).exitCode);
}

TEST_F(HostProcess, ASecondSignalEndsItAtOnceAndAnIgnoredOneNever) {
  writePipeline(act("hang"));
  Started host(run);
  EXPECT_TRUE(host.reads("0_Act"));
  EXPECT_TRUE(eventually([&] {
    host.kill(SIGINT);
    return !host.isRunning();
  }));
  EXPECT_EQ("running", outcome("run"));

  writePipeline(act("wait"));
  Started nohup(run, [] { ::signal(SIGHUP, SIG_IGN); });
  EXPECT_TRUE(nohup.reads("0_Act"));
  nohup.kill(SIGHUP);
  nohup.kill(SIGTERM);
  EXPECT_EQ(SIGTERM, nohup.end());
  EXPECT_TRUE(contains(nohup.text(), "ended by SIGTERM before the first step"));
}

TEST_F(HostProcess, TheBarFitsTheTerminalAndIsErased) {
  writePipeline(act("wait"));
  Started host(run);
  EXPECT_TRUE(host.reads(" % [##........] waiting  0_Act")) << host.text();
  host.kill(SIGINT);
  host.end();
  const std::string& text = host.text();
  const std::size_t last = text.rfind('\r', text.find("orders: p.json"));
  const std::size_t before = text.rfind('\r', last - 1);
  EXPECT_EQ(std::string(last - before - 1, ' '), text.substr(before + 1, last - before - 1));
  for (std::size_t begin = 0; begin < before;) {
    const std::size_t end = text.find('\r', begin);
    EXPECT_LT(end - begin, 40u) << text;
    begin = end + 1;
  }
}

TEST_F(HostProcess, StandardStreamsMayBeClosedOrFull) {
  writePipeline(act("print") + R"(, {"Receive": {"count": 2}})");
  const std::string line = " run p.json --out run --overwrite ";
  struct Case {
    std::string command;
    int status;
    std::string output;
    std::string errors;
  };
  const Case cases[] = {
      {"$0" + line + ">&-", 1, "", "orders: cannot write standard output: Bad file descriptor\n"},
      {"$0" + line + ">/dev/full", 1, "",
       "orders: cannot write standard output: No space left on device\n"},
      {"$0 ''", 2, "", "orders: unknown command \"\"; see orders --help\n"},
      {"$0 --help >/dev/full", 1, "", "orders: cannot write standard output\n"},
      {"$0" + line + "<&- 2>&- | head -n 1", 0, "open        2\n", ""},
      {"cat p.json | $0 run /dev/stdin --out run --overwrite | head -n 1", 0, "open        2\n",
       ""},
      {"cat p.json | $0 check /dev/stdin --set Receive.count=3", 0, "", ""},
      {"echo [] | $0" + line + "--set Receive.rules=/dev/stdin", 1, "",
       "orders: /dev/stdin: is read twice, which a pipe or device does not allow\n"},
      {"$0" + line + "--set Receive.file=/dev/fd/3 3<p.json; echo 5 | $0" + line +
           "--set Receive.file=/dev/stdin | head -n 1",
       0, "open        5\n", "orders: p.json:1:54: 1_Receive: /dev/fd/3: not a number\n"},
      {"NO_ORDERS=1 $0" + line + "; $0" + line + " | head -n 1", 0, "open        2\n",
       "orders: no orders\n"},
      {"mkdir gone && cd gone && rmdir ../gone && $0 run ../p.json --out x", 1, "", "orders: "}};
  for (const auto& [command, status, output, errors] : cases) {
    const ChildResult result = runProgram({"sh", "-c", command, ORDERS});
    EXPECT_EQ(status, result.exitCode) << command;
    EXPECT_EQ(output, result.output) << command;
    EXPECT_EQ(0u, result.errors.find(errors)) << result.errors << command;
    EXPECT_EQ(result.errors.empty() ? 0 : 1,
              std::count(result.errors.begin(), result.errors.end(), '\n'))
        << result.errors;
  }
}

TEST_F(HostProcess, AFullDiskAndOneThatCannotBeWrittenAreReported) {
  writePipeline(act("write", "o.txt"));
  fs::create_directory("disk");
  const std::pair<std::string, std::string> cases[] = {
      {"size=4k", "No space left on device"},
      {"ro", "disk/run cannot be made: Read-only file system"}};
  for (const auto& [option, reason] : cases) {
    const ChildResult made =
        runProgram({"unshare", "-m", "sh", "-c",
                    "mount -t tmpfs -o " + option +
                        " tmpfs disk && echo mounted && $0 run p.json --out disk/run",
                    ORDERS});
    if (!contains(made.output, "mounted")) GTEST_SKIP() << "no tmpfs: " << made.errors;
    EXPECT_EQ(1, made.exitCode);
    EXPECT_TRUE(contains(lastLine(made.errors), reason)) << made.errors;
  }
}

}  // namespace
}  // namespace host_test
