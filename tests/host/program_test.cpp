// Exit statuses and streams of a host, run as a process.
#include <boost/algorithm/string/split.hpp>

#include "host/program.h"

namespace host_test {
namespace {

// Runs the host with arguments that have no blanks; a run replaces the one in the folder "run".
ChildResult runInFolder(const std::string& arguments) {
  std::vector<std::string> words;
  boost::split(words, arguments, [](char c) { return c == ' '; });
  if (words[0] == "run") words.insert(words.end(), {"--out", "run", "--overwrite"});
  return orders(words);
}

class HostProgram : public InTemporaryDirectory {};

TEST_F(HostProgram, EndsWithItsStatusAndWritesOnlyResultsToStandardOutput) {
  writePipeline(R"({"Receive": {"count": 3}}, )" + act("print") + ", " + act("write", "o.txt"));
  writePipeline(act("report", "one is late") + ", " + act("report", "two"), "report.json");
  writePipeline(act("break", "three is late") + ", " + act("throw", "too late"), "break.json");
  writePipeline(act("throw", "no\\norders %s%n"), "throw.json");
  writeFile("named.json", R"({"named_modules": {}})");
  writeFile("misspelt.json", R"({"moduls": []})");
  writeFile("rule.json", R"({"LateModule": {"limit": -1}})");
  writePipeline(R"({"Receive": {"rules": "rule.json"}})", "with_rule.json");
  writeFile("twice.json", R"({"modules": [{"Receive": {"note": 5, "count": 1, "count": 0}}]})");
  const std::string twice =
      "twice.json:1:35: error: modules[0].Receive.note: Value is not convertible to string.\n"
      "twice.json:1:50: warning: modules[0].Receive.count: the key is given twice; the last one "
      "counts\n"
      "twice.json:1:59: error: modules[0].Receive.count: 0 is less than 1\n";
  const char* const lastOfTwice =
      "twice.json:1:35: modules[0].Receive.note: Value is not convertible to string.; and 1 more "
      "error";
  const std::string run = (fs::canonical(".") / "run").generic_string();
  const std::string file = (fs::canonical(".") / "run/o.txt").generic_string();
  const std::string folder = "run folder  " + run + "\n";
  const std::string json =
      "{\n \"open\" : 3,\n \"orders\" : \"" + file + "\",\n \"run folder\" : \"" + run + "\"\n}\n";
  struct Case {
    const char* arguments;
    int status;
    std::string output;
    const char* error;
  };
  const Case cases[] = {
      {"run p.json", 0, "open        3\n" + folder + "orders      " + file + "\n", ""},
      {"run p.json --json", 0, json, ""},
      {"run report.json", 3, "open        0\n" + folder,
       "report.json: the plan breaks 2 rules: one is late"},
      {"run break.json", 3, "open        0\n" + folder,
       "break.json: the plan breaks 1 rule: three is late"},
      {"run throw.json", 1, "", "throw.json:1:15: 0_Act: no orders %s%n"},
      {"run p.json --until 3_Act", 2, "",
       "the pipeline has no step \"3_Act\"; did you mean \"1_Act\"?; see orders run --help"},
      {"check named.json", 1, "named.json: error: the pipeline has no chain to run\n",
       "named.json: the pipeline has no chain to run"},
      {"check misspelt.json", 1,
       "misspelt.json:1:2: error: modules: should be a object array; did you mean \"modules\"?\n",
       "misspelt.json:1:2: modules: should be a object array; did you mean \"modules\"?"},
      {"check twice.json --set Receive.lots={}", 1, twice, lastOfTwice},
      {"check p.json --with twice.json", 1, twice, lastOfTwice},
      {"check rule.json with_rule.json ./rule.json", 1,
       "rule.json:1:26: error: LateModule.limit: -1 is less than 0\n",
       "rule.json:1:26: LateModule.limit: -1 is less than 0"},
      {"check rule.json --set LateModule.limit=1", 2, "",
       "--set is for pipelines: rule.json is a rule file; see orders check --help"},
      {"rnu p.json", 2, "", "unknown command rnu; did you mean \"run\"?; see orders --help"},
      {"run p.json --until dump", 2, "",
       "the pipeline has no step \"dump\"; it has 0_Receive, 1_Act, 2_Act; see orders run --help"},
      {"run", 2, "", "PIPELINE is required; see orders run --help"},
      {"run --ste=a", 2, "",
       "unknown option --ste; did you mean \"--set\"?; see orders run --help"},
      {"run p.json q.json", 2, "",
       "The following argument was not expected: q.json; see orders run --help"},
      {"run p.json --in\nst", 2, "", "unknown option --in st; see orders run --help"},
      {"run p.json --dumps some", 2, "",
       "--dumps: some not in {all,brief,none}; see orders run --help"}};
  for (const auto& [arguments, status, output, error] : cases) {
    const ChildResult result = runInFolder(arguments);
    EXPECT_EQ(status, result.exitCode) << arguments;
    EXPECT_EQ(output, result.output) << arguments;
    EXPECT_EQ(*error == '\0' ? "" : "orders: " + std::string(error) + "\n", result.errors);
  }
  EXPECT_EQ(0, orders({"run", "p.json", "--out", "printed"}).exitCode);
  const std::string printed = readFile("printed/log/output.txt");
  EXPECT_TRUE(contains(printed, "by a stream\n") && contains(printed, "by the C library\n"));
  EXPECT_EQ(fs::canonical("p.json").generic_string(),
            libvarrow::File2Json("printed/run.json")["pipeline"].asString());
}

TEST_F(HostProgram, TheLastLineOfAFailedRunIsEnoughToActOn) {
  writeFile("bad.json", "{\"modules\": [\n  {\"Act\" {}}]}");
  writePipeline(R"({"Recieve": {}})", "class.json");
  writePipeline(R"({"Receive": {"rules": "rules.json"}})", "rules_at_fault.json");
  writeFile("rules.json", R"([{"Late": {"limit": -1}}])");
  writePipeline(R"({"ChainedModule": {"modules": [{"Receive": {"file": "gone.txt"}}]}})",
                "input.json");
  writePipeline(act("throw a number"), "odd.json");
  writePipeline(act("print"), "good.json");
  for (const std::string name : {"throwing", "other_version"}) {
    fs::create_directory(name);
    const std::string file = name + fs::path(ORDERS_PLUGIN).extension().string();
    fs::copy_file(fs::path(PLUGINS) / file, fs::path(name) / file);
  }
  struct Case {
    const char* arguments;
    std::string begin;
    const char* end;
  };
  const std::string here = fs::canonical(".").generic_string();
  const Case cases[] = {
      {"gone.json", "gone.json: cannot be read: No such file or directory", ""},
      {".", ".: cannot be read: it is a folder", ""},
      {"bad.json", "bad.json:2:10: ", "Missing ':' after object member name"},
      {"class.json",
       "class.json:1:15: modules[0]: Recieve miss register; did you mean \"Receive\"?; no plug-ins",
       "/plugins"},
      {"rules_at_fault.json", here + "/rules.json:1:21: [0].Late.limit: -1 is less than 0", ""},
      {"input.json", "input.json:1:46: 0_ChainedModule/0_Receive: gone.txt: not a number", ""},
      {"odd.json", "odd.json:1:15: 0_Act: an exception that is not a std::exception", ""},
      {"good.json --plugins throwing", "plug-in " + here + "/throwing/throwing.", ": out of order"},
      {"good.json --plugins other_version", "shared library:" + here, "!"},
      {"good.json --plugins gone", "the folder of plug-ins " + here + "/gone does not exist", ""},
      {"good.json --with bad.json", "bad.json:2:10: ", "Missing ':' after object member name"},
      {"good.json --set Act.how=fly", "--set Act.how=fly: modules[0].Act.how: \"fly\" is not",
       "\"hang\""}};
  for (const auto& [arguments, begin, end] : cases) {
    const ChildResult result = runInFolder("run " + std::string(arguments));
    EXPECT_EQ(1, result.exitCode) << arguments;
    EXPECT_EQ("", result.output) << arguments;
    const std::string line = lastLine(result.errors);
    EXPECT_EQ(0u, line.find("orders: " + begin)) << result.errors << begin;
    EXPECT_TRUE(*end == '\0' ? line == "orders: " + begin : contains(line, end)) << line;
  }
}

TEST_F(HostProgram, RunsEveryLayoutWithClassesOfPlugIns) {
  const std::string folder = fs::path(ORDERS_PLUGIN).parent_path().string();
  for (const char* pipeline :
       {R"({"$schema": "s", "modules": [{"Added": {}}, {"ChainedModule": {"modules": []}}]})",
        R"({"$schema": "s", "mainModule": {"ChainedModule": {"modules": [{"Added": {}}]}}})",
        R"({"$schema": "s", "named_modules": {"a": {"Added": {}}, "b": {"Act": {"how": "print"}}},
            "chained_module": ["a", "b", "a"]})"}) {
    writeFile("p.json", pipeline);
    const ChildResult run = runInFolder("run p.json --plugins " + folder);
    EXPECT_EQ(0, run.exitCode) << run.errors;
    EXPECT_EQ("", run.errors);
    EXPECT_TRUE(fs::exists("run/dump/0_Added") || fs::exists("run/dump/0_ChainedModule/0_Added"))
        << pipeline;
  }
}

TEST_F(HostProgram, ACrashEndsWithTheStepAndTheReason) {
  const std::pair<std::string, std::string> cases[] = {
      {act("crash"), ":1:15: 0_Act: the process ends by SIGSEGV"},
      {R"({"ChainedModule": {"modules": [)" + act("check") + "]}}",
       ":1:46: 0_ChainedModule/0_Act: Expression 'text == "}};
  for (const auto& [module, reason] : cases) {
    writePipeline(module);
    const ChildResult result = runInFolder("run p.json");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(0u, lastLine(result.errors).find("orders: p.json" + reason)) << result.errors;
    EXPECT_EQ("running", outcome("run"));
  }
}

}  // namespace
}  // namespace host_test
