// Pipelines from files, run end to end, and from JSON in three layouts.
#include "libvarrow/module/ModuleLoader.h"

#include <boost/filesystem/operations.hpp>
#include <memory>

#include "libvarrow/json/json.h"
#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/ModuleExecutor.h"
#include "libvarrow/utility/UTFConverter.h"
#include "module/recording.h"
#include "support/support.h"

namespace module_test {

using namespace libvarrow;
using namespace test_support;

class ModuleLoaderTest : public InTemporaryDirectory {
 protected:
  ModuleLoaderTest() { loader.classRegister().regClass<Add>("Add"); }

  ModuleLoader loader;
};

TEST_F(ModuleLoaderTest, NamedModulesRunInTheOrderOfTheChain) {
  writeFile("p.json", R"({
      "named_modules": {"prepare": {"add": {"amount": 5}},
                        "nest": {"ChainedModule": {"modules": [{"Add": {"amount": 100}}]}},
                        "solve": {"CommonModuleStatDumper": {"file": "统é.json"}}},
      "chained_module": ["prepare", "solve", "prepare", "nest"], "whatever": 1})");
  loader.loadFile("p.json");
  StatisticsContainer root("root");
  RecordingData data;
  data.dumpPath = "run/";
  data.statisticsContainer = &root;
  loader.mainModule()->process(&data);
  EXPECT_EQ(110, data.steps);
  const Json::Value entry =
      File2Json(utility::pathFromUtf8("统é.json"))["Module::CommonModuleStatDumper"];
  ASSERT_EQ(2u, entry.size()) << "its own entry";
  EXPECT_TRUE(entry[0].isMember("TimeStatistic") && entry[1].isMember("contextIn"));
}

TEST_F(ModuleLoaderTest, MissingAndInvalidPartsChangeNothing) {
  loader.loadJson(json(R"({"named_modules": {"a": {"Add": {"amount": 1}}}})"));
  EXPECT_EQ(nullptr, loader.mainModule());
  loader.loadJson(json(R"({"chained_module": ["a", "a"]})"));
  const boost::shared_ptr<Module> main = loader.mainModule();
  for (const char* text : {"{}", "null", R"({"named_modules": null, "chained_module": null})"}) {
    loader.loadJson(json(text));
  }
  const std::pair<const char*, const char*> cases[] = {
      {R"({"named_modules": {"b": {"Add": {"amount": 2}}, "c": {"Add": {"amount": "x"}}}})",
       "named_modules.c.Add.amount: Value is not convertible to Int."},
      {R"({"named_modules": []})", "named_modules: should be a object"},
      {"[]", "should be a object"}};
  for (const auto& c : cases) {
    EXPECT_EQ(c.second, errorOf([&] { loader.loadJson(json(c.first)); }));
  }
  EXPECT_EQ(main, loader.mainModule());
  EXPECT_EQ(1u, loader.namedModules().size());
  loader.loadJson(json(R"({"named_modules": {}, "chained_module": []})"));
  EXPECT_TRUE(loader.namedModules().empty());
  EXPECT_NE(main, loader.mainModule());
}

TEST_F(ModuleLoaderTest, SingleChainsAndTheObjectLayoutAreStrict) {
  const std::unique_ptr<ChainedModule> chain(
      loader.loadChainedModule(json(R"({"modules": [{"Add": {"amount": 1}}]})")));
  EXPECT_EQ(1u, chain->getData4Bind().modules.size());
  EXPECT_EQ(nullptr, loader.mainModule());
  cppbind::ClassRegister own;
  own.regClass<Add>("Mine");
  const auto load = [&](const char* text) {
    return errorOf([&] { loader.loadJsonV2(json(text), &own); });
  };
  EXPECT_EQ("no error", load(R"({"mainModule": {"Mine": {"amount": 1}}})"));
  EXPECT_EQ("unknown json key:[x]", load(R"({"mainModule": {"Mine": {"amount": 1}}, "x": 1})"));
  EXPECT_EQ("mainModule: Add miss register", load(R"({"mainModule": {"Add": {"amount": 1}}})"));
  EXPECT_EQ("Mine", loader.mainModule()->getModuleName());
  EXPECT_TRUE(loader.namedModules().empty());
}

TEST_F(ModuleLoaderTest, AnExecutorRejectsDirectoriesAndUnknownKeys) {
  const auto errorIn = [&](const std::string& file) {
    return errorOf([&] { ModuleExecutor(&loader.classRegister(), file, false); });
  };
  EXPECT_EQ("Can not open file [.]", errorIn("."));
  writeFile("p.json", R"({"modules": [{"Add": {"amount": 1, "b": 2}}], "extra": 1})");
  EXPECT_NO_THROW(ModuleExecutor(&loader.classRegister(), "p.json", true));
  EXPECT_NE("no error", errorIn("p.json"));
  expectAbort("Expression 'nullptr != moduleRegister' is false",
              [] { ModuleExecutor(nullptr, "p.json", true); });
}

}  // namespace module_test
