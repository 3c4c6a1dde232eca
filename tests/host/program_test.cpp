// Exit statuses and streams of a host, run as a process.
#include "host/program.h"

namespace host_test {
namespace {

class HostProgram : public InTemporaryDirectory {};

TEST_F(HostProgram, EndsWithItsStatusAndWritesOnlyResultsToStandardOutput) {
  writePipeline(R"({"Receive": {"count": 3}}, )" + act("print") + ", " + act("write", "o.txt"));
  writePipeline(act("report", "one is late") + ", " + act("report", "two is late") + ", " +
                    act("write", "after.txt"),
                "report.json");
  writePipeline(act("break", "three is late") + ", " + act("write", "after.txt"), "break.json");
  writePipeline(act("throw", "no\\norders %s%n"), "throw.json");
  const std::string run = (fs::canonical(".") / "run").generic_string();
  const std::string file = (fs::canonical(".") / "run/o.txt").generic_string();
  const std::string folder = "run folder  " + run + "\n";
  struct Case {
    std::vector<std::string> arguments;
    int status;
    std::string output;
    std::string errors;
  };
  const std::string see = "; see orders run --help\n";
  const Case cases[] = {
      {{"run", "p.json"}, 0, "open        3\n" + folder + "orders      " + file + "\n", ""},
      {{"run", "p.json", "--json"},
       0,
       "{\n \"open\" : \"3\",\n \"orders\" : \"" + file + "\",\n \"run folder\" : \"" + run +
           "\"\n}\n",
       ""},
      {{"run", "report.json"},
       3,
       "open        0\n" + folder + "orders      " + run + "/after.txt\n",
       "orders: report.json: the plan breaks 2 rules: one is late\n"},
      {{"run", "break.json"},
       3,
       "open        0\n" + folder,
       "orders: break.json: the plan breaks 1 rule: three is late\n"},
      {{"run", "throw.json"}, 1, "", "orders: throw.json:1:15: 0_Act: no orders %s%n\n"},
      {{"run", "p.json", "--until", "3_Act"},
       1,
       "",
       "orders: p.json: the pipeline has no step \"3_Act\"; did you mean \"1_Act\"?\n"},
      {{}, 2, "", "orders: no command is given; see orders --help\n"},
      {{"rnu", "p.json"},
       2,
       "",
       "orders: unknown command rnu; did you mean \"run\"?; see orders --help\n"},
      {{"run"}, 2, "", "orders: PIPELINE is required" + see},
      {{"run", "p.json", "q.json"},
       2,
       "",
       "orders: The following argument was not expected: q.json" + see},
      {{"run", "p.json", "--in\nst"},
       2,
       "",
       "orders: The following argument was not expected: --in st" + see},
      {{"run", "p.json", "--dumps", "some"},
       2,
       "",
       "orders: --dumps: some not in {all,brief,none}" + see},
  };
  for (Case c : cases) {
    const bool isRun = c.arguments.size() > 1 && c.arguments[0] == "run";
    if (isRun) c.arguments.insert(c.arguments.end(), {"--out", "run", "--overwrite"});
    const ChildResult result = orders(c.arguments);
    EXPECT_EQ(c.status, result.exitCode) << c.errors;
    EXPECT_EQ(c.output, result.output) << c.errors;
    EXPECT_EQ(c.errors, result.errors);
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
    std::vector<std::string> arguments;
    std::string begin;
    std::string end;
  };
  const std::string here = fs::canonical(".").generic_string();
  const Case cases[] = {
      {{"gone.json"}, "gone.json: cannot be read: No such file or directory", ""},
      {{"."}, ".: cannot be read: it is a folder", ""},
      {{"bad.json"}, "bad.json:2:10: ", "Missing ':' after object member name"},
      {{"class.json"},
       "class.json:1:15: modules[0]: Recieve miss register; did you mean \"Receive\"?; no plug-ins "
       "in ",
       "plugins"},
      {{"rules_at_fault.json"},
       here + "/rules.json:1:21: [0].Late.limit: -1 is less than 0; no plug-ins in ",
       ""},
      {{"input.json"}, "input.json:1:46: 0_ChainedModule/0_Receive: gone.txt: not a number", ""},
      {{"odd.json"}, "odd.json:1:15: 0_Act: an exception that is not a std::exception", ""},
      {{"good.json", "--plugins", "throwing"}, "out of order", ""},
      {{"good.json", "--plugins", "other_version"}, "shared library:" + here, "!"},
      {{"good.json", "--plugins", "gone"},
       "the folder of plug-ins " + here + "/gone does not exist",
       ""},
      {{"good.json", "--with", "bad.json"},
       "bad.json:2:10: ",
       "Missing ':' after object member name"},
      {{"good.json", "--set", "Act.how=fly"},
       "--set Act.how=fly: modules[0].Act.how: \"fly\" is not one of ",
       "\"hang\""},
  };
  for (Case c : cases) {
    c.arguments.insert(c.arguments.begin(), "run");
    c.arguments.insert(c.arguments.end(), {"--out", "run", "--overwrite"});
    const ChildResult result = orders(c.arguments);
    EXPECT_EQ(1, result.exitCode) << c.begin;
    EXPECT_EQ("", result.output) << c.begin;
    const std::string line = lastLine(result.errors);
    EXPECT_EQ(0u, line.find("orders: " + c.begin)) << result.errors << c.begin;
    EXPECT_TRUE(contains(line, c.end)) << line;
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
    const ChildResult run =
        orders({"run", "p.json", "--out", "run", "--overwrite", "--plugins", folder});
    EXPECT_EQ(0, run.exitCode) << run.errors;
    EXPECT_EQ("", run.errors);
    EXPECT_TRUE(fs::exists("run/dump/0_Added") || fs::exists("run/dump/0_ChainedModule/0_Added"))
        << pipeline;
  }
}

}  // namespace
}  // namespace host_test
