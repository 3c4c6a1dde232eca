// Pipelines from JSON in three layouts.
#include "libvarrow/module/ModuleLoader.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>

#include "libvarrow/module/CommonModuleStatDumper.h"
#include "module/recording.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"
#include "support/json.h"

namespace module_test {

using namespace libvarrow;
using test_support::json;

class ModuleLoaderTest : public test_support::InTemporaryDirectory {
 protected:
  ModuleLoaderTest() { loader.classRegister().regClass<Add>("Add"); }

  template <class Call>
  static std::string errorOf(Call call) {
    testing::internal::CaptureStdout();
    std::string what = "no error";
    try {
      call();
    } catch (const cppbind::ParseErrorException& error) {
      what = error.what();
    }
    testing::internal::GetCapturedStdout();
    return what;
  }

  ModuleLoader loader;
};

TEST_F(ModuleLoaderTest, NamedModulesRunInTheOrderOfTheChainAndAreShared) {
  test_support::writeFile("p.json", R"({
      "named_modules": {"prepare": {"add": {"amount": 5}},
                        "nest": {"ChainedModule": {"modules": [{"Add": {"amount": 100}}]}},
                        "solve": {"CommonModuleStatDumper": {"file": "stat.json"}}},
      "chained_module": ["prepare", "solve", "prepare", "nest"], "whatever": 1})");
  loader.loadFile("p.json");
  EXPECT_EQ(3u, loader.namedModules().size());
  const auto& chain = dynamic_cast<ChainedModule&>(*loader.mainModule()).getData4Bind().modules;
  ASSERT_EQ(4u, chain.size());
  EXPECT_EQ(chain[0], chain[2]);
  EXPECT_EQ(loader.namedModules().at("prepare"), chain[0]);
  StatisticsContainer root("root");
  RecordingData data;
  data.dumpPath = "run/";
  data.statisticsContainer = &root;
  loader.mainModule()->process(&data);
  EXPECT_EQ(110, data.steps);
  EXPECT_TRUE(boost::filesystem::exists("run/2_add/module_stat.json"));
  EXPECT_TRUE(boost::filesystem::exists("stat.json"));
}

TEST_F(ModuleLoaderTest, WhatIsNotThereStaysAsItWas) {
  loader.loadJson(json(R"({"named_modules": {"a": {"Add": {"amount": 1}}}})"));
  EXPECT_EQ(nullptr, loader.mainModule());
  loader.loadJson(json(R"({"chained_module": ["a", "a"]})"));
  const boost::shared_ptr<Module> main = loader.mainModule();
  for (const char* text : {"{}", "null", R"({"named_modules": null, "chained_module": null})"}) {
    loader.loadJson(json(text));
  }
  EXPECT_EQ(main, loader.mainModule());
  EXPECT_EQ(1u, loader.namedModules().count("a"));
  loader.loadJson(json(R"({"named_modules": {}, "chained_module": []})"));
  EXPECT_TRUE(loader.namedModules().empty());
  EXPECT_NE(main, loader.mainModule());
}

TEST_F(ModuleLoaderTest, ErrorsNameThePlaceAndLeaveTheLoaderAsItWas) {
  loader.loadJson(json(R"({"named_modules": {"a": {"Add": {"amount": 1}}}})"));
  struct Case {
    const char* text;
    const char* error;
  };
  const Case cases[] = {
      {R"({"named_modules": {"b": {"Add": {"amount": 2}}, "c": {"Add": {"amount": "x"}}}})",
       "named_modules.c.Add.amount: Value is not convertible to Int."},
      {R"({"named_modules": {"b": {"No": {}}}})", "named_modules.b: No miss register"},
      {R"({"named_modules": {"b": {"Add": {"amount": 1, "z": 0}}}})",
       "named_modules.b.Add: unknown json key:[z]"},
      {R"({"named_modules": []})", "named_modules: should be a object"},
      {"[]", "should be a object"}};
  for (const Case& c : cases) {
    EXPECT_EQ(c.error, errorOf([&] { loader.loadJson(json(c.text)); }));
  }
  EXPECT_EQ(1u, loader.namedModules().count("a"));
  ModuleLoader copy = loader;
  EXPECT_EQ(loader.namedModules().at("a"), copy.namedModules().at("a"));
  EXPECT_NO_THROW(copy.loadJson(json(R"({"named_modules": {"b": {"Add": {"amount": 2}}}})")));
  EXPECT_EQ("Can not open file [none.json]", errorOf([&] { loader.loadFile("none.json"); }));
}

TEST_F(ModuleLoaderTest, BrokenStructureEndsTheProcess) {
  struct Case {
    const char* text;
    const char* expression;
  };
  const char* const named = "this->named_modules.find(module_name) != this->named_modules.end()";
  const Case cases[] = {
      {R"({"named_modules": {"a": {"Add": {}, "B": {}}}})", "module_type_names.size() == 1"},
      {R"({"named_modules": {"a": {}}})", "module_type_names.size() == 1"},
      {R"({"named_modules": {"a": 5}})", "module_type_names.size() == 1"},
      {R"({"chained_module": {}})", "jv.isArray()"},
      {R"({"chained_module": [1]})", "jv_module.isString()"},
      {R"({"chained_module": ["a"]})", named}};
  for (const Case& c : cases) {
    const auto child = test_support::runInChild([&] { loader.loadJson(json(c.text)); });
    EXPECT_EQ(SIGABRT, child.signal) << c.text;
    EXPECT_EQ(0u, child.errors.find(std::string("Expression '") + c.expression + "' is false"))
        << child.errors;
  }
}

TEST_F(ModuleLoaderTest, TheObjectLayoutCreatesTheMainModuleThroughTheGivenRegister) {
  cppbind::ClassRegister own;
  own.regClass<Add>("Mine");
  loader.loadJsonV2(json(R"({"mainModule": {"Mine": {"amount": 1}}})"), &own);
  EXPECT_EQ("Mine", loader.mainModule()->getModuleName());
  EXPECT_TRUE(loader.namedModules().empty());
  EXPECT_EQ("mainModule: not found", errorOf([&] { loader.loadJsonV2(json("{}"), &own); }));
  EXPECT_EQ("unknown json key:[x]", errorOf([&] {
              loader.loadJsonV2(json(R"({"mainModule": {"Mine": {"amount": 1}}, "x": 1})"), &own);
            }));
  EXPECT_EQ("mainModule: Add miss register", errorOf([&] {
              loader.loadJsonV2(json(R"({"mainModule": {"Add": {"amount": 1}}})"), &own);
            }));
  EXPECT_EQ("Mine", loader.mainModule()->getModuleName());
}

TEST_F(ModuleLoaderTest, TheChainLayoutGivesAChainOfItsOwn) {
  const std::unique_ptr<ChainedModule> chain(
      loader.loadChainedModule(json(R"({"modules": [{"Add": {"amount": 1}}]})")));
  EXPECT_EQ(1u, chain->getData4Bind().modules.size());
  EXPECT_EQ(nullptr, loader.mainModule());
  EXPECT_EQ("unknown json key:[x]",
            errorOf([&] { loader.loadChainedModule(json(R"({"modules": [], "x": 1})")); }));
}

}  // namespace module_test
