// The comparison of runs.
#include <boost/algorithm/string/replace.hpp>

#include "host/program.h"
#include "libvarrow/utility/UTFConverter.h"

namespace host_test {
namespace {

// Writes the folder of a run of two steps, the second of which is nested.
void makeRun(const std::string& run) {
  const std::string here = fs::current_path().generic_string();
  std::string record = R"({"libvarrow_run": 1, "host": "orders", "folder": "HERE/RUN",
 "pipeline": "HERE/RUN.json", "outcome": "done", "dumps": "all", "begin": "2024", "wall": 0.5,
 "machine": {"name": "one"}, "program": {"file": "/bin/orders", "build_id": "aa"},
 "plugins": [{"name": "gantt", "file": "/bin/gantt.so", "version": "1.0.0", "build_id": "bb"}],
 "folder_of_inputs": "HERE/RUN_data", "inputs": [{"file": "HERE/RUN_data/o.txt", "sha256": "cc"}],
 "files": [{"kind": "plan", "path": "HERE/RUN/out/plan.txt"}], "rules_kept": ["early"],
 "configuration": {"modules": [{"Chain": {"file": "HERE/RUN_data/o.txt", "seed": 1, "a.b[0]": 2}},
                               {"CommonModuleStatDumper": {"file": "out/时é.json"}}]},
 "entries": ["run.json", "steps.jsonl", "dump", "log", "out", "trace.json"]})";
  boost::replace_all(record, "HERE", here);
  boost::replace_all(record, "RUN", run);
  writeFile(run + "/run.json", record);
  writeFile(run + "/steps.jsonl",
            R"({"event": "begin", "step": "", "class": "ChainedModule"}
{"event": "begin", "step": "0_Chain", "class": "Chain", "before": {"open": 1, "x.y": [1, 1e300]}}
{"event": "begin", "step": "0_Chain/0_Plan", "class": "Plan", "time": "2024"}
{"event": "end", "step": "0_Chain/0_Plan", "wall": 0.25, "after": {"late": 0.1}}
{"event": "end", "step": "0_Chain", "wall": 0.5}
{"event": "end", "step": "", "wall": 0.75}
)");
  const std::string step = run + "/dump/0_Chain/0_Plan/";
  writeFile(step + "in_detail.txt", "in " + here + "/" + run + "/out\r\nfirst\n");
  writeFile(step + "out_detail.txt", "a\nb\nc\nd\ne\nf\n");
  writeFile(step + "after_process/deep/data.bin", std::string("\0\1\2\3", 4));
  writeFile(step + "after_process/empty.txt", "");
  writeFile(step + "module_stat.json", run);
  writeFile(run + "/out/plan.txt", "plan of " + here + "/" + run + "_data/o.txt\nend\n");
  writeFile(run + "/out/" + libvarrow::utility::pathFromUtf8("时é.json"), run);
  for (const char* const file : {"/log/run.log", "/trace.json", "/notes.txt"}) {
    writeFile(run + file, run);
  }
}

// Replaces `from` in a file; writes a new file without `from`, removes it without `to`.
void plant(const std::string& file, const std::string& from, const std::string& to) {
  if (to.empty()) {
    fs::remove(file);
  } else {
    std::string text = from.empty() ? to : readFile(file);
    EXPECT_TRUE(from.empty() || contains(text, from)) << file;
    boost::replace_first(text, from, to);
    writeFile(file, text);
  }
}

class Diff : public InTemporaryDirectory {
 protected:
  Diff() {
    makeRun("one");
    makeRun("two");
  }
};

TEST_F(Diff, FindsTheFirstDifferenceInEveryPlace) {
  const std::string plan = "dump/0_Chain/0_Plan/";
  const std::string longText(100'000, 'x');
  struct Case {
    std::string file;
    const char* from;
    std::string to;
    std::string told;
  };
  const Case cases[] = {
      {"run.json", "\"a.b[0]\": 2", "\"a.b[0]\": 3",
       "pipeline: modules[0].Chain.a.b[0]\n- 2\n+ 3\n"},
      {"run.json", "\"seed\": 1, ", "\"seed\": 1, \"noise\": \"\\u001b[2J\", ",
       "pipeline: modules[0].Chain.noise only in two\n+ \"\\u001b[2J\"\n"},
      {"run.json", "two_data/o.txt\", \"seed", "two_data/p.txt\", \"seed",
       "pipeline: modules[0].Chain.file\n"},
      {"run.json", "\"cc\"", "\"c0\"", "input file o.txt\n- sha256 cc\n+ sha256 c0\n"},
      {"run.json", "1.0.0", "1.0.1", "plug-in gantt\n- version 1.0.0\n+ version 1.0.1\n"},
      {"run.json", "\"name\": \"gantt\"", "\"name\": \"chart\"", "plug-in chart only in two\n"},
      {"run.json", "\"done\"", "\"failed\"", "outcome\n- \"done\"\n+ \"failed\"\n"},
      {"run.json", "early", "rest", "rules_kept: [0]\n- \"early\"\n+ \"rest\"\n"},
      {"run.json", "\"plan\"", "\"chart\"", "files: [0].kind\n"},
      {"steps.jsonl", "1e300", "1e299", "0_Chain: key figures before: x.y[1]\n- "},
      {"steps.jsonl", "\"open\": 1", "\"open\": 1.5",
       "0_Chain: key figures before: open\n- 1\n+ 1.5\n"},
      {"steps.jsonl", "0.1", "0.10000000000000002",
       "0_Chain/0_Plan: key figures after: late\n- 0.1"},
      {"steps.jsonl", "\"class\": \"Plan\"", "\"class\": \"Sort\"", "0_Chain/0_Plan: class\n"},
      {"steps.jsonl", "{\"event\": \"end\", \"step\": \"0_Chain/",
       "{\"event\": \"failed\", \"step\": \"0_Chain/",
       "0_Chain/0_Plan: event\n- \"end\"\n+ \"failed\"\n"},
      {"steps.jsonl", "{\"event\": \"end\", \"step\": \"0_Chain\", \"wall\": 0.5}\n", "\n",
       "two/steps.jsonl:5"},
      {"steps.jsonl", "{\"event\": \"begin\", \"step\": \"\"",
       "{\"event\": \"begin\", \"step\": \"9_New\"",
       "run: step only in one\n- class ChainedModule\n"},
      {plan + "in_detail.txt", "first", "second", "0_Chain/0_Plan: in_detail.txt:2\n  in "},
      {plan + "out_detail.txt", "d\n", longText + "\n",
       "0_Chain/0_Plan: out_detail.txt:4\n  b\n  c\n- d\n- e\n- f\n+ xxx"},
      {plan + "out_detail.txt", "f\n", "f",
       "0_Chain/0_Plan: out_detail.txt:6\n  d\n  e\n- f\n+ f  (no"},
      {plan + "after_process/deep/data.bin", "\2", "\7",
       "0_Chain/0_Plan: after_process/deep/data.bin, byte 2\n- 02 03\n+ 07 03\n"},
      {plan + "after_process/deep/data.bin", "", std::string("\0\1", 2),
       "0_Chain/0_Plan: after_process/deep/data.bin, byte 2\n- 02 03\n+ the end\n"},
      {plan + "after_process/empty.txt", "", "",
       "0_Chain/0_Plan: after_process/empty.txt only in one\n- a file of 0 bytes\n"},
      {plan + "after_process/new/file", "", "x",
       "0_Chain/0_Plan: after_process/new only in two\n+ a folder\n"},
      {"out/plan.txt", "end", "End", "out/plan.txt:2\n  plan of "}};
  for (const auto& [file, from, to, told] : cases) {
    fs::remove_all("two");
    makeRun("two");
    plant("two/" + file, from, to);
    const ChildResult result = orders({"diff", "one", "two"});
    const bool isTrouble = contains(told, "two/steps");
    EXPECT_EQ(isTrouble ? 2 : 1, result.exitCode) << file << from << result.errors;
    EXPECT_EQ(isTrouble ? "" : "--- one\n+++ two\n" + told,
              result.output.substr(0, isTrouble ? 0 : 16 + told.size()));
    EXPECT_EQ(isTrouble, contains(result.errors, told)) << result.errors;
    EXPECT_GT(2000u, result.output.size());
  }
}

TEST_F(Diff, TimesMachinesFoldersAndBuildsAreNoDifference) {
  const auto isSame = [](const ChildResult& result, const std::string& notes) {
    EXPECT_EQ(0, result.exitCode) << result.errors;
    EXPECT_EQ("no difference in 3 steps and 5 files\n" + notes, result.output);
  };
  isSame(orders({"diff", "one", "two"}), "");
  for (const auto& [from, to] : {std::pair("2024", "2025"),
                                 {"\"wall\": 0.5", "\"wall\": 1"},
                                 {"\"one\"", "\"other\""},
                                 {"\"aa\"", "\"a0\""}}) {
    plant("two/run.json", from, to);
  }
  plant("two/steps.jsonl", "0.25", "9");
  plant("two/dump/0_Chain/0_Plan/in_detail.txt", "\r\n", "\n");
  fs::create_directory("moved");
  fs::rename("two", "moved/three");
  fs::rename("one", "One");
  isSame(orders({"diff", "One", "moved/three/run.json"}), "note: program: another build\n");
  isSame(runProgram({VARROW_TOOL, "diff", "One", "moved/three"}), "note: program: another build\n");
  plant("moved/three/run.json", "\"all\"", "\"none\"");
  fs::remove_all("moved/three/dump");
  const ChildResult brief = orders({"diff", "One", "moved/three"});
  EXPECT_EQ(0, brief.exitCode);
  EXPECT_TRUE(contains(brief.output,
                       "1 file\nnote: program: another build\n"
                       "note: only the key figures of the steps are compared: the "
                       "dumps are \"all\" and \"none\"\n"))
      << brief.output;
}

TEST_F(Diff, AllGoesOnAndShowsTheTimesOfBothRuns) {
  plant("two/run.json", "\"seed\": 1", "\"seed\": 2");
  plant("two/dump/0_Chain/0_Plan/out_detail.txt", "a", "A");
  plant("two/steps.jsonl", "0_Chain/0_Plan\", \"class\"", "0_Chain/1_Sort\", \"class\"");
  const ChildResult result = orders({"diff", "one", "two", "--all"});
  EXPECT_EQ(1, result.exitCode);
  EXPECT_EQ(
      "--- one\n+++ two\npipeline: modules[0].Chain.seed\n- 1\n+ 2\n"
      "0_Chain/0_Plan: step only in one\n- class Plan\n"
      "0_Chain/1_Sort: step only in two\n+ class Plan\n"
      "0_Chain/0_Plan: out_detail.txt:1\n- a\n- b\n- c\n+ A\n+ b\n+ c\n"
      "times of the steps, - and +:\n"
      "  0_Chain/0_Plan       0.250 s       0.250 s\n"
      "  0_Chain              0.500 s       0.500 s\n"
      "  run                  0.750 s       0.750 s\n",
      result.output);
  const Json::Value report = json(orders({"diff", "one", "two", "--all", "--json"}).output);
  EXPECT_EQ(4u, report["differences"].size());
  EXPECT_EQ("pipeline: modules[0].Chain.seed", report["differences"][0]["place"].asString());
  EXPECT_EQ(0.25, report["times"][0]["right"].asDouble());
}

TEST_F(Diff, BrokenForeignAndUnfinishedFoldersAreTrouble) {
  writeFile("foreign/notes.txt", "mine");
  writeFile("torn/run.json", R"({"libvarrow_run": 1)");
  writeFile("odd/run.json", R"({"libvarrow_run": 1, "outcome": "done", "inputs": [5]})");
  makeRun("running");
  plant("running/run.json", "\"done\"", "\"running\"");
  plant("running/run.json", "\"inputs\"", "\"not known\"");
  makeRun("lost");
  fs::remove("lost/steps.jsonl");
  makeRun("half");
  fs::resize_file("half/steps.jsonl", fs::file_size("half/steps.jsonl") - 1);
  makeRun("hostile");
  plant("hostile/run.json", "\"out\"", "\"../foreign\"");
  plant("hostile/steps.jsonl", "0_Chain/0_Plan", "../../foreign");
  plant("hostile/steps.jsonl", "0_Chain/0_Plan", "../../foreign");
  const std::pair<std::string, std::string> cases[] = {
      {"gone", "gone does not exist"},
      {"foreign", "foreign"},
      {"torn", "torn/run.json is not JSON"},
      {"odd", "odd/run.json: \"inputs\" has a wrong value"},
      {"running", "running has not ended: its run is working, or its process died"},
      {"lost", "lost has lost its file steps.jsonl"},
      {"half", "half has lost the end of its file steps.jsonl"}};
  for (const auto& [run, error] : cases) {
    for (const bool isFirst : {true, false}) {
      const ChildResult result = orders({"diff", isFirst ? run : "one", isFirst ? "one" : run});
      EXPECT_EQ(2, result.exitCode) << run;
      EXPECT_EQ(0u, result.errors.find("orders: " + error)) << result.errors;
      EXPECT_EQ(run == "running", contains(result.output, "\noutcome\n")) << result.output;
    }
  }
  EXPECT_EQ(0, orders({"diff", "hostile", "hostile"}).exitCode);
  EXPECT_FALSE(contains(orders({"diff", "one", "hostile", "--all"}).output, "mine"));
  EXPECT_EQ(2, orders({"diff", "one"}).exitCode);
}

TEST_F(Diff, FindsTheDifferenceInAnyBlockOfALargeFile) {
  const std::string file = "/dump/0_Chain/0_Plan/out_detail.txt";
  const auto told = [&](const std::string& left, const std::string& right) {
    writeFile("one" + file, left);
    writeFile("two" + file, right);
    const std::string output = orders({"diff", "one", "two"}).output;
    const std::string place = "out_detail.txt";
    const std::size_t at = output.find(place);
    if (at == std::string::npos) return std::string("same");
    const std::size_t begin = at + place.size();
    return output.substr(begin, output.find('\n', begin) - begin);
  };
  const std::string here = fs::current_path().generic_string();
  std::string lines;
  for (int i = 2; i <= 60'000; ++i) lines += "line " + std::to_string(i) + '\n';
  for (const std::string number : {"2", "24000", "60000"}) {
    const std::string other = boost::replace_first_copy(lines, " " + number + "\n", " no\n");
    EXPECT_EQ(":" + number, told("\n" + lines, "\n" + other));
    EXPECT_EQ(":" + number, told(here + "/one\n" + lines, here + "/two\n" + other));
  }
  EXPECT_EQ("same", told(here + "/one\n" + lines, here + "/two\n" + lines));
  std::string bytes(600'000, '\0');
  const std::string zeros = bytes;
  bytes[500'000] = 'x';
  EXPECT_EQ(", byte 500000", told(zeros, bytes));
  EXPECT_EQ(":2", told("\n" + std::string(600'000, 'y'), "\n" + std::string(599'999, 'y') + "z"));
}

class Repeat : public InTemporaryDirectory {
 protected:
  Repeat() {
    writeFile("data/o.txt", "3");
    const std::string threads = act("trace", "threads");
    writePipeline(R"({"Receive": {"file": "o.txt"}}, )" + threads + ", " +
                  act("write", "plan.txt"));
    EXPECT_EQ(0, orders({"run", "p.json", "--inputs", "data", "--out", "run"}).exitCode);
  }
  static ChildResult repeat(std::vector<std::string> more = {}) {
    more.insert(more.begin(), {"repeat", "run", "--out", "again"});
    fs::remove_all("again");
    return orders(more);
  }
};

TEST_F(Repeat, TellsWhetherTheSameRunGivesTheSame) {
  const ChildResult same = repeat();
  EXPECT_EQ(0, same.exitCode) << same.errors;
  EXPECT_EQ("", same.errors);
  EXPECT_TRUE(contains(same.output, "/again\nno difference in 4 steps and "));
  EXPECT_TRUE(contains(orders({"repeat", "run", "--out", "again"}).errors, "name another folder"));
  plant("run/plan.txt", "dump", "Dump");
  const ChildResult other = repeat({"--json"});
  EXPECT_EQ(1, other.exitCode) << other.errors;
  EXPECT_EQ("plan.txt:1", json(other.output)["differences"][0]["place"].asString());
  writePipeline(act("report", "late") + ", " + act("throw", "no machine"));
  orders({"run", "p.json", "--out", "run", "--overwrite", "--dumps", "none", "--set",
          "modules[0].Act.text=very late"});
  const ChildResult failing = repeat();
  EXPECT_EQ(0, failing.exitCode) << failing.output << failing.errors;
  EXPECT_EQ("failed", outcome("again"));
  EXPECT_FALSE(fs::exists("again/dump/1_Act/in_info.json"));
  orders({"run", "p.json", "--out", "run", "--overwrite", "--until", "0_Act"});
  EXPECT_EQ(0, repeat().exitCode);
  EXPECT_EQ("rules broken", outcome("again"));
}

// "latest" names the new run as soon as that has its folder.
TEST_F(Repeat, AndContinuesTheRunThatWasTheLatest) {
  fs::copy_file("data/o.txt", "o.txt");
  EXPECT_EQ(0, orders({"run", "p.json"}).exitCode);
  for (const char* const folder : {"inputs", "from"}) {
    if (!fs::is_symlink("runs/latest")) continue;
    fs::copy_file("o.txt", "runs/latest/o.txt");
    const bool isFrom = folder == std::string("from");
    const ChildResult run = orders({"run", "p.json", "--" + std::string(folder),
                                    isFrom ? "runs/latest/dump/2_Act" : "runs/latest"});
    EXPECT_EQ(0, run.exitCode) << run.errors;
  }
  for (int i = 0; i < 2; ++i) {
    const ChildResult again = orders({"repeat", "runs/latest", "--json"});
    EXPECT_EQ(0, again.exitCode) << again.errors;
    const Json::Value report = json(again.output);
    EXPECT_NE(report["left"], report["right"]);
    EXPECT_EQ(fs::is_symlink("runs/latest") ? 2 : 4, report["steps"].asInt());
  }
}

TEST_F(Repeat, RefusesChangedFilesUnlessTheyAreWanted) {
  plant("run/run.json", "\"build_id\":\"", "\"build_id\":\"ff");
  const ChildResult rebuilt = repeat();
  EXPECT_EQ(2, rebuilt.exitCode);
  EXPECT_TRUE(contains(rebuilt.errors, ": another build\norders: not repeated: "))
      << rebuilt.errors;
  EXPECT_FALSE(fs::exists("again"));
  EXPECT_EQ(0, repeat({"--anyway"}).exitCode);
  writeFile("data/o.txt", "4");
  const ChildResult changed = repeat({"--anyway"});
  EXPECT_EQ(1, changed.exitCode);
  EXPECT_TRUE(contains(changed.errors, "input file o.txt has changed\n")) << changed.errors;
  EXPECT_TRUE(contains(changed.output, "\ninput file o.txt\n- sha256 ")) << changed.output;
  fs::rename("data", "moved");
  EXPECT_TRUE(contains(repeat().errors, "input file o.txt is missing\n"));
  writeFile("moved/o.txt", "3");
  EXPECT_EQ(0, repeat({"--anyway", "--inputs", "moved"}).exitCode);
  plant("run/run.json", "\"host\" : \"orders\"", "\"host\" : \"planner\"");
  EXPECT_TRUE(contains(repeat().errors, "run is a run of the program \"planner\"\n"));
}

}  // namespace
}  // namespace host_test
