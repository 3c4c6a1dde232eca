// Changes of a pipeline before it runs: --with and --set.
#include <array>

#include "host/modules.h"
#include "host/program.h"

namespace host_test {
namespace {

class Overrides : public InTemporaryDirectory {
 protected:
  // Returns the pipeline that ran, or the error as a text.
  Json::Value changed(libvarrow::RunOptions options) {
    options.pipeline = "p.json";
    options.folder = "run";
    options.overwrite = true;
    options.dumps = libvarrow::DumpLevel::None;
    libvarrow::Host host("orders", "");
    registerOrders(host);
    host.regClass<Receive>("shop.Receive");
    Orders data;
    const libvarrow::RunResult result = host.execute(options, data);
    if (result.end != libvarrow::RunResult::End::Done) return result.error;
    return libvarrow::File2Json("run/pipeline.json");
  }
};

TEST_F(Overrides, APathIsReadKeyByKey) {
  writePipeline(R"({"Receive": {"lots": {"a.b": 1, "[0]": 2, "a": 3}}},
      {"ChainedModule": {"modules": [{"RECEIVE": {"note": "x"}}]}}, {"Receive": null})");
  const std::string lots = R"("lots": {"a.b": 1, "[0]": 2, "a": 3})";
  const std::string note = R"("note": "x")";
  // The three objects afterwards.
  const std::pair<std::string, std::string> cases[] = {
      {"modules[0].Receive.count=5", "{" + lots + R"(, "count": 5}, {)" + note + "}, null"},
      {"modules[2].Receive.count= 6 ", "{" + lots + "}, {" + note + R"(}, {"count": 6})"},
      {"receive.count=5",
       "{" + lots + R"(, "count": 5}, {)" + note + R"(, "count": 5}, {"count": 5})"},
      {"modules[1].ChainedModule.modules[0].RECEIVE.note=a=1",
       "{" + lots + R"(}, {"note": "a=1"}, null)"},
      {"modules[1].ChainedModule.modules[0].RECEIVE.note=null",
       "{" + lots + R"(}, {"note": "null"}, null)"},
      {"modules[1].ChainedModule.modules[0].RECEIVE.note=\"7\"",
       "{" + lots + R"(}, {"note": "7"}, null)"},
      {"modules[0].Receive.lots.a.b=9",
       R"({"lots": {"a.b": 9, "[0]": 2, "a": 3}}, {)" + note + "}, null"},
      {"modules[0].Receive.lots[0]=9",
       R"({"lots": {"a.b": 1, "[0]": 9, "a": 3}}, {)" + note + "}, null"},
      {"modules[0].Receive.lots.new=9",
       R"({"lots": {"a.b": 1, "[0]": 2, "a": 3, "new": 9}}, {)" + note + "}, null"},
      {"modules[0].Receive.lots={\"z\": 1}", R"({"lots": {"z": 1}}, {)" + note + "}, null"}};
  for (const auto& [setting, objects] : cases) {
    libvarrow::RunOptions options;
    options.set = {setting};
    const Json::Value ran = changed(options);
    ASSERT_TRUE(ran.isObject()) << ran;
    Json::Value found(Json::arrayValue);
    found.append(ran["modules"][0]["Receive"]);
    found.append(ran["modules"][1]["ChainedModule"]["modules"][0]["RECEIVE"]);
    found.append(ran["modules"][2]["Receive"]);
    EXPECT_EQ(json("[" + objects + "]"), found) << setting;
  }
  writePipeline(R"({"shop.Receive": {}})");
  libvarrow::RunOptions options;
  options.set = {"shop.receive.count=4"};
  EXPECT_EQ(4, changed(options)["modules"][0]["shop.Receive"]["count"].asInt());
}

TEST_F(Overrides, APathWithoutOneMeaningIsRefused) {
  const std::string kPipeline = R"({"modules": [
    {"Receive": {"lots": {"a.b": 1, "a": {"b": 2}}}}], "Receive": {"count": 1}})";
  writeFile("p.json", kPipeline);
  const std::pair<std::string, std::string> cases[] = {
      {"Receive.cuont=1", "the pipeline has no \"Receive.cuont\"; did you mean \"Receive.count\"?"},
      {"modules[0].Receive.notee=1",
       "the pipeline has no \"modules[0].Receive.notee\"; did you mean "
       "\"modules[0].Receive.note\"?"},
      {"modules[1].Receive.count=1",
       "the pipeline has no \"modules[1].Receive.count\"; did you mean "
       "\"modules[0].Receive.count\"?"},
      {"modules[-1].Receive.count=1",
       "the pipeline has no \"modules[-1].Receive.count\"; did you mean "
       "\"modules[0].Receive.count\"?"},
      {"modules[0].Recieve={}",
       "the pipeline has no \"modules[0].Recieve\"; did you mean \"modules[0].Receive\"?"},
      {"Act.text=1", "the pipeline has no \"Act.text\""},
      {"modules[0]Receive.note=1",
       "the pipeline has no \"modules[0]Receive.note\"; did you mean "
       "\"modules[0].Receive.note\"?"},
      {"modules[0].Receive.lots.a.b=1",
       "\"modules[0].Receive.lots.a.b\" means modules[0].Receive.lots.a.b in two ways"},
      {"Receive.count=1", "\"Receive.count\" is a path and also a field of a class"},
      {"Receive.count", "\"Receive.count\" is not PATH=VALUE"},
      {"=1", "\"=1\" is not PATH=VALUE"}};
  for (const auto& [setting, error] : cases) {
    libvarrow::RunOptions options;
    options.set = {setting};
    EXPECT_EQ("--set " + setting + ": " + error, changed(options).asString());
  }
}

TEST_F(Overrides, FilesAreMergedAsMergePatches) {
  const std::array<const char*, 3> cases[] = {
      {R"({"a":"b"})", R"({"a":"c"})", R"({"a":"c"})"},
      {R"({"a":"b"})", R"({"b":"c"})", R"({"a":"b","b":"c"})"},
      {R"({"a":"b"})", R"({"a":null})", "{}"},
      {R"({"a":"b","b":"c"})", R"({"a":null,"x":null})", R"({"b":"c"})"},
      {R"({"a":["b"]})", R"({"a":"c"})", R"({"a":"c"})"},
      {R"({"a":"c"})", R"({"a":["b"]})", R"({"a":["b"]})"},
      {R"({"a":{"b":"c"}})", R"({"a":{"b":"d","c":null}})", R"({"a":{"b":"d"}})"},
      {R"({"a":[{"b":"c"}]})", R"({"a":[1,null]})", R"({"a":[1,null]})"},
      {R"(["a","b"])", R"(["c"])", R"(["c"])"},
      {R"({"e":null})", R"({"a":1})", R"({"e":null,"a":1})"},
      {"[1,2]", R"({"a":"b","c":null})", R"({"a":"b"})"},
      {"{}", R"({"a":{"bb":{"ccc":null}}})", R"({"a":{"bb":{}}})"}};
  for (const auto& [target, patch, merged] : cases) {
    writeFile("p.json", R"({"chained_module": [], "x": )" + std::string(target) + "}");
    writeFile("with.json", R"({"x": )" + std::string(patch) + "}");
    libvarrow::RunOptions options;
    options.with = {"with.json"};
    EXPECT_EQ(json(merged), changed(options)["x"]) << target << patch;
  }
}

TEST_F(Overrides, FaultsPointToTheirOrigin) {
  writeFile("p.json", "{\"modules\": [ {\"Receive\":\n  {\"count\": 2, \"cuont\": 1}}]}");
  writeFile("whole.json", "{\n \"modules\": [{\"Receive\": {\"count\": 0}}]}");
  writeFile("gone.json", "{\"modules\": null}");
  struct Case {
    std::vector<fs::path> with;
    std::vector<std::string> set;
    std::string error;
  };
  const Case cases[] = {
      {{}, {"Receive.note=x"}, "p.json:2:16: modules[0].Receive: unknown json key:[cuont]"},
      {{"whole.json"}, {}, "whole.json:2:36: modules[0].Receive.count: 0 is less than 1"},
      {{"whole.json"},
       {"Receive.count=x"},
       "--set Receive.count=x: modules[0].Receive.count: Value is not convertible to Int."},
      {{"whole.json"},
       {"Receive.count=1", "modules[0].Receive={\"count\": 0}"},
       "--set modules[0].Receive={\"count\": 0}: modules[0].Receive.count: 0 is less than 1"},
      {{"gone.json"}, {}, "gone.json:1:13: modules: should be a object array"},
      {{"gone.json", "none.json"}, {}, "none.json: cannot be read: No such file or directory"}};
  for (const Case& c : cases) {
    libvarrow::RunOptions options;
    options.with = c.with;
    options.set = c.set;
    EXPECT_EQ(c.error, changed(options).asString());
  }
}

}  // namespace
}  // namespace host_test
