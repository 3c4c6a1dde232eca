// The records of a run: run.json, steps.jsonl, trace.json.
#include <cmath>
#include <sstream>

#include "host/modules.h"
#include "host/program.h"

namespace host_test {
namespace {

std::vector<Json::Value> linesOf(const fs::path& file) {
  std::vector<Json::Value> values;
  std::istringstream lines(readFile(file));
  for (std::string line; std::getline(lines, line);) values.push_back(json(line));
  return values;
}

struct Event {
  Json::Int64 begin;
  Json::Int64 end;
  std::string thread;
};

// Reads a trace strictly: by begin, in microseconds, nested, on threads with names.
std::multimap<std::string, Event> eventsOf(const fs::path& file) {
  std::map<int, std::string> threads;
  std::map<int, std::vector<Json::Int64>> ends;  // of the events around the next one
  std::multimap<std::string, Event> events;
  Json::Int64 last = 0;
  const Json::Value trace = libvarrow::File2Json(file);
  EXPECT_EQ("ms", trace["displayTimeUnit"].asString());
  for (const Json::Value& event : trace["traceEvents"]) {
    EXPECT_TRUE(event["pid"].isInt() && event["tid"].isInt() && event["args"].isObject()) << event;
    const int thread = event["tid"].asInt();
    if (event["ph"].asString() == "M") {
      EXPECT_EQ("thread_name", event["name"].asString());
      threads[thread] = event["args"]["name"].asString();
      continue;
    }
    EXPECT_EQ("X", event["ph"].asString());
    EXPECT_EQ(1u, threads.count(thread)) << event;
    const Json::Int64 begin = event["ts"].asInt64();
    const Json::Int64 end = begin + event["dur"].asInt64();
    EXPECT_TRUE(last <= begin && begin <= end) << event;
    last = begin;
    std::vector<Json::Int64>& around = ends[thread];
    for (; !around.empty() && end > around.back(); around.pop_back()) {
      EXPECT_LE(around.back(), begin) << "overlaps " << event;
    }
    around.push_back(end);
    events.insert({event["name"].asString(), {begin, end, threads[thread]}});
  }
  return events;
}

bool isInside(const Event& inner, const Event& outer) {
  return outer.begin <= inner.begin && inner.end <= outer.end;
}

class Records : public InTemporaryDirectory {};

TEST_F(Records, AreJsonForEveryNumberAndName) {
  using libvarrow::utility::fromUtf8;
  static const std::string name = fromUtf8("计é");  // code page 1252 has the last letter only
  struct Named : Act {
    std::string getModuleName() override { return name; }
  };
  struct Unbounded : Orders {
    Json::Value getBaiscInfoJson() override {
      Json::Value info;
      for (const double number : {HUGE_VAL, -HUGE_VAL, std::nan("")}) info["bounds"].append(number);
      return info;
    }
  } data;
  writePipeline(R"({"Named": {"how": "write", "text": "é.txt"}})");
  libvarrow::Host host("orders", "");
  registerOrders(host);
  host.regClass<Named>("Named");
  libvarrow::RunOptions options;
  options.pipeline = "p.json";
  for (const std::string& folder : {name, std::string("run")}) {
    options.folder = folder;
    EXPECT_EQ("", host.execute(options, data).error);
  }
  EXPECT_EQ(json(R"(["inf", "-inf", "nan"])"),
            linesOf("run/steps.jsonl").back()["after"]["bounds"]);
  const std::string step = "0_" + libvarrow::utility::toUtf8(name);
  EXPECT_EQ(step, linesOf("run/steps.jsonl")[1]["step"].asString());
  EXPECT_EQ(1u, eventsOf("run/trace.json").count(step));
  EXPECT_EQ(0, orders({"diff", name, "run"}).exitCode);
  writeFile("run/dump/0_" + name + "/after_process/open.txt", "7");
  const std::string output = orders({"diff", name, "run"}).output;
  EXPECT_TRUE(contains(output, "0_" + name + ": after_process/open.txt:1")) << output;
}

TEST_F(Records, NameAStepOfAClassInANamespaceAsUntilDoes) {
  writePipeline(R"({"a::B": {"how": "print"}}, )" + act("throw", "late"));
  libvarrow::Host host("orders", "");
  registerOrders(host);
  host.regClass<Act>("a::B");
  Orders data;
  libvarrow::RunOptions settings;
  settings.pipeline = "p.json";
  settings.folder = "run";
  settings.overwrite = true;
  EXPECT_EQ("1_Act", host.execute(settings, data).step);
  settings.until = linesOf("run/steps.jsonl")[1]["step"].asString();
  EXPECT_EQ("", host.execute(settings, data).error);
  EXPECT_TRUE(fs::exists("run/dump/" + settings.until + "/out_info.json"));
}

TEST_F(Records, OfAFailedRunNameEachStepWithItsPlaceAndFigures) {
  const std::string chain = R"({"ChainedModule": {"modules": [{"Receive": {"count": 3}}, )";
  writePipeline(act("keep", "in\\u0000\\u00e9") + ",\n  " + chain + act("throw", "no orders") +
                "]}}");
  const ChildResult run = orders({"run", "p.json", "--out", "run", "--set", "Act.order_seed=5"});
  EXPECT_EQ(1, run.exitCode);
  const char* const lines[] = {"begin  p.json",
                               "begin 0_Act p.json:1:15",
                               "end 0_Act ",
                               "begin 1_ChainedModule p.json:2:4",
                               "begin 1_ChainedModule/0_Receive p.json:2:35",
                               "end 1_ChainedModule/0_Receive ",
                               "begin 1_ChainedModule/1_Act p.json:2:62",
                               "failed 1_ChainedModule/1_Act ",
                               "failed 1_ChainedModule ",
                               "failed  "};
  const std::vector<Json::Value> steps = linesOf("run/steps.jsonl");
  ASSERT_EQ(std::size(lines), steps.size());
  double last = 0;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const Json::Value& step = steps[i];
    const bool isBegin = step["event"].asString() == "begin";
    EXPECT_EQ(lines[i], step["event"].asString() + " " + step["step"].asString() + " " +
                            step["place"].asString());
    EXPECT_LE(last, step["at"].asDouble());
    last = step["at"].asDouble();
    EXPECT_EQ(isBegin ? 27u : 0u, step["time"].asString().size());
    EXPECT_EQ(!isBegin, step["wall"].isDouble() && step["memory"].asDouble() > 1e6);
  }
  EXPECT_EQ("Receive", steps[4]["class"].asString());
  EXPECT_EQ(0, steps[4]["before"]["open"].asInt());
  EXPECT_EQ(3, steps[5]["after"]["open"].asInt());

  const Json::Value record = libvarrow::File2Json("run/run.json");
  const Json::Value& inner = record["configuration"]["modules"][1]["ChainedModule"]["modules"];
  EXPECT_TRUE(inner[0]["Receive"]["lots"].isObject()) << "a default";
  ASSERT_EQ(2u, record["seeds"].size());
  EXPECT_EQ("modules[1].ChainedModule.modules[1].Act.order_seed",
            record["seeds"][1]["path"].asString());
  EXPECT_EQ(5, record["seeds"][1]["value"].asInt());
  EXPECT_EQ(std::string("in\0\xC3\xA9", 5), record["rules_kept"][0].asString());
  EXPECT_TRUE(record["wall"].asDouble() > 0 && record["memory"].asDouble() > 1e6);
  for (const Json::Value& code :
       {record["program"], record["libraries"][0], record["libraries"][1]}) {
    EXPECT_TRUE(fs::exists(code["file"].asString())) << code;
    EXPECT_LT(8u, code["build_id"].asString().size() + code["sha256"].asString().size());
  }
  EXPECT_TRUE(isInside(eventsOf("run/trace.json").find("1_Act")->second,
                       eventsOf("run/trace.json").find("1_ChainedModule")->second));
}

TEST_F(Records, HaveSpansPlugInsAndTheFirstWarnings) {
  writePipeline(act("trace", "\\\"\\u8ba1\\n") +
                R"(, {"Added": {"chain": {"ChainedModule": {"modules": []}}}})");
  const std::string plugins = fs::path(ORDERS_PLUGIN).parent_path().string();
  const ChildResult run = orders({"run", "p.json", "--out", "run", "--plugins", plugins});
  EXPECT_EQ("", run.errors);
  const auto events = eventsOf("run/trace.json");
  const auto outer = events.find("\"\xE8\xAE\xA1\n");
  ASSERT_TRUE(outer != events.end() && events.count("other") == 1);
  EXPECT_EQ("thread 2", events.find("other")->second.thread);
  EXPECT_EQ("main", outer->second.thread);
  EXPECT_TRUE(isInside(outer->second, events.find("0_Act")->second));
  EXPECT_EQ(201u, events.count("inner"));
  for (auto [inner, end] = events.equal_range("inner"); inner != end; ++inner) {
    EXPECT_TRUE(isInside(inner->second, outer->second));
  }
  const Json::Value record = libvarrow::File2Json("run/run.json");
  EXPECT_EQ(200u, record["warnings"].size());
  EXPECT_EQ("WARN late 199", record["warnings"][199]["level"].asString() + " " +
                                 record["warnings"][199]["text"].asString());
  EXPECT_EQ(1, record["warnings_dropped"].asInt());
  const Json::Value& plugin = record["plugins"][0];
  EXPECT_EQ(fs::path(ORDERS_PLUGIN).stem().string(), plugin["name"].asString());
  EXPECT_EQ(record["library"], plugin["version"]);
}

TEST_F(Records, ContinueARunWithAnyStep) {
  const std::string chain = R"({"ChainedModule": {"modules": [{"Receive": {"count": 3}}, )";
  writePipeline(R"({"Receive": {}}, )" + chain + act("throw", "no orders") + "]}}, " +
                act("print"));
  EXPECT_EQ(1, orders({"run", "p.json", "--out", "far/run"}).exitCode);
  fs::rename("far", "moved");
  const std::string dump = "moved/run/dump/";
  struct Case {
    std::string from;
    const char* until;
    int status;
    std::string error;
  };
  const std::string here = fs::canonical(".").generic_string();
  const std::string help = "; see orders run --help";
  const Case cases[] = {
      {dump + "1_ChainedModule/1_Act", "", 1, "p.json:1:90: 1_ChainedModule/1_Act: no orders"},
      {dump + "1_ChainedModule/0_Receive/", "1_ChainedModule/0_Receive", 0, ""},
      {dump + "1_ChainedModule", "0_Receive", 2,
       "the step 0_Receive is before 1_ChainedModule, with which the run begins" + help},
      {dump + "1_ChainedModule/1_Atc", "", 2,
       "the pipeline has no step \"1_ChainedModule/1_Atc\"; did you mean "
       "\"1_ChainedModule/1_Act\"?" +
           help},
      {dump + "2_Act", "", 2,
       here + "/" + dump +
           "2_Act has no before_process: the run had fewer dumps, or its data none" + help},
      {"far/run/dump/2_Act", "", 2, here + "/far/run/dump/2_Act does not exist" + help},
      {"moved/run", "", 2,
       here + "/moved/run is not the dump of a step of a run, such as RUN/dump/2_Plan" + help}};
  for (const auto& [from, until, status, error] : cases) {
    std::vector<std::string> line{"run", "p.json", "--out", "run", "--overwrite", "--from", from};
    if (*until != '\0') line.insert(line.end(), {"--until", until});
    const ChildResult run = orders(line);
    EXPECT_EQ(status, run.exitCode) << from;
    EXPECT_EQ(error.empty() ? "" : "orders: " + error + "\n", run.errors);
    EXPECT_EQ(status == 0, contains(run.output, "open        4\n")) << run.output;
    EXPECT_EQ(status == 0, fs::exists("run/dump/1_ChainedModule/0_Receive")) << from;
    fs::remove_all("run");
  }
  // The dumps would be removed before they are read.
  const std::string own = orders({"run", "p.json", "--out", "moved/run", "--overwrite", "--from",
                                  "moved/../" + dump + "1_ChainedModule"})
                              .errors;
  EXPECT_TRUE(contains(own, "is in the folder of the new run")) << own;
  fs::remove(dump + "1_ChainedModule/before_process/open.txt");
  const ChildResult torn = orders({"run", "p.json", "--from", dump + "1_ChainedModule"});
  EXPECT_EQ(1, torn.exitCode);
  EXPECT_TRUE(contains(torn.errors, "1_ChainedModule/before_process: no open.txt")) << torn.errors;
}

}  // namespace
}  // namespace host_test
