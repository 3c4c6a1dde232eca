// The schemas of the example's pipeline and rule files.
#include <cppbind/cppbind.h>
#include <libvarrow/module/pipeline_schema.h>
#include <libvarrow/xrule/rule_file_schema.h>

#include <boost/filesystem/path.hpp>

#include "shop_fixtures.h"
#include "support/SchemaCheck.h"

namespace jobshop_test {
namespace {

using cppbind::ClassRegister;

// With the class of the plug-in.
const ClassRegister& moduleClasses() {
  const boost::filesystem::path program(JOBSHOP_PROGRAM);
  shopHost().setPluginFolder((program.parent_path() / "plugins").string());
  shopHost().loadPlugins();
  return shopHost().modules();
}

const ClassRegister& ruleClasses() {
  return shopHost().rules();
}

void expectValid(bool isValid, const Json::Value& schema, const std::vector<Json::Value>& files) {
  const std::vector<bool> verdicts = validBySchema(cppbind::schemaText(schema), files);
  for (std::size_t i = 0; i < files.size(); ++i) EXPECT_EQ(isValid, verdicts[i]) << files[i];
}

std::vector<Json::Value> files(std::initializer_list<const char*> names) {
  std::vector<Json::Value> made;
  for (const char* name : names) {
    made.push_back(cppbind::readJsonFile(std::string(JOBSHOP_FOLDER "/") + name));
  }
  return made;
}

std::vector<Json::Value> elements(const char* text) {
  const Json::Value list = json(text);
  return {list.begin(), list.end()};
}

TEST(Schema, OfPipelinesAcceptsTheFilesOfTheExampleInAllLayouts) {
  const Json::Value schema = libvarrow::pipelineSchema(moduleClasses());
  expectValid(true, schema,
              files({"pipeline.json", "pipeline_improve.json", "pipeline_late.json",
                     "pipeline_shifts.json"}));
  expectValid(true, schema, elements(R"([
      {"$schema": "pipeline.schema.json", "modules": []},
      {"$schema": "s", "mainModule": {"ChainedModule": {"modules": [{"CheckSchedule": null}]}}},
      {"$schema": "s", "named_modules": {"a": {"Dispatch": {"rule": "SPT"}}}, "ignored": 1},
      {"named_modules": null, "chained_module": ["a", "a"], "mainModule": 1}])"));
  expectValid(false, schema, elements(R"([
      null, [], {}, {"modules": null}, {"modules": {}}, {"modules": [{}]}, {"modules": ["a"]},
      {"modules": [], "mainModule": {"CheckSchedule": {}}}, {"modules": [], "named_modules": {}},
      {"modules": [{"CheckSchedule": {}, "WriteSchedule": {}}]}, {"modules": [{"Unknown": {}}]},
      {"modules": [{"CheckSchedule": {"$schema": "s"}}]}, {"modules": [{"Dispatch": {}}]},
      {"modules": [{"SetCalendars": {"start": "tomorrow"}}]}, {"mainModule": null},
      {"mainModule": {"CheckSchedule": {}}, "other": 1}, {"named_modules": {"a": null}},
      {"named_modules": {"a": {}}}, {"chained_module": "a"}, {"chained_module": [1]}])"));
}

TEST(Schema, OfRuleFilesAcceptsTheFilesOfTheExample) {
  const Json::Value schema = libvarrow::ruleFileSchema(ruleClasses());
  expectValid(true, schema, files({"rules.json", "rules_strict.json"}));
  expectValid(true, schema, elements(R"([null, [], {}, {"$schema": "s", "rule_list": []},
      {"rule_level": 2.0, "rule_list": [{"MaxWait": {"limit": 1}}], "MaxWait": {"limit": 2}}])"));
  expectValid(false, schema, elements(R"([1, [null], [[]], {"rule_level": null}, {"MaxWait": {}},
      {"rule_level": 3000000000}, {"rule_list": {}}, {"rule_list": [{"$schema": "s"}]},
      {"Unknown": {}}, {"MaxWait": {"limit": "1"}}, {"MaxWait": {"limit": 1, "rule_level": 1}}])"));
}

TEST(Schema, AllClassesDescribeCompletely) {
  for (const ClassRegister* reg : {&moduleClasses(), &ruleClasses()}) {
    EXPECT_EQ(std::vector<std::string>(), cppbind::descriptionFaults(*reg));
    for (const auto& made : cppbind::describe(*reg).classes) {
      EXPECT_NE("", made.about) << made.id;
      for (const auto& field : made.fields) EXPECT_NE("", field.value.about) << field.key;
    }
  }
  EXPECT_TRUE(contains(libvarrow::pipelineReference(moduleClasses()), "\n### SetCalendars\n"));
  EXPECT_TRUE(contains(libvarrow::ruleFileReference(ruleClasses()), "| `limit` | integer"));
}

}  // namespace
}  // namespace jobshop_test
