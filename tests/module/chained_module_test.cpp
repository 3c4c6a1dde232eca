// Modules that run others in order.
#include <gtest/gtest.h>

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <csignal>
#include <regex>
#include <set>
#include <stdexcept>

#include "libvarrow/log/log.h"
#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/ChainedModuleV2.h"
#include "module/recording.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"
#include "support/json.h"

namespace module_test {

using namespace libvarrow;
using test_support::json;
namespace fs = boost::filesystem;

// Both kinds run their modules alike.
template <class Chain>
class ChainTest : public testing::Test {
 protected:
  std::vector<std::string> workPaths() const {
    std::vector<std::string> paths;
    for (const std::string& call : data.calls) {
      if (call.rfind("work ", 0) == 0) paths.push_back(call.substr(5));
    }
    return paths;
  }

  test_support::TemporaryDirectory directory;
  RecordingData data;
  Chain chain;
};

using Chains = testing::Types<ChainedModule, ChainedModuleV2>;
TYPED_TEST_SUITE(ChainTest, Chains, );

TYPED_TEST(ChainTest, EveryModuleHasANumberedDirectory) {
  auto twice = boost::make_shared<Worker>("A");
  this->chain.addModule(twice);
  this->chain.addModule(boost::make_shared<Worker>("B"));
  this->chain.addModule(twice);
  this->data.dumpPath = "out/";
  this->chain.processImp(&this->data);
  EXPECT_EQ((std::vector<std::string>{"out/0_A/", "out/1_B/", "out/2_A/"}), this->workPaths());
  EXPECT_EQ("out/", this->data.dumpPath);
  EXPECT_TRUE(fs::exists("out/1_B/module_stat.json"));
  EXPECT_FALSE(fs::exists("out/1_B/_cpu.prof"));
}

TYPED_TEST(ChainTest, ChainsNestAsDirectories) {
  auto inner = boost::make_shared<TypeParam>();
  inner->addModule(boost::make_shared<Worker>("A"));
  this->chain.addModule(inner);
  this->data.dumpPath = "run/";
  this->chain.process(&this->data);
  EXPECT_EQ("run/0_" + inner->getModuleName() + "/0_A/", this->workPaths().at(0));
}

TYPED_TEST(ChainTest, WithoutAPathEveryModuleGetsAFreshUuid) {
  this->chain.addModule(boost::make_shared<Worker>("A"));
  this->chain.addModule(boost::make_shared<Worker>("B"));
  this->chain.processImp(&this->data);
  const std::string uuid = "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";
  const std::vector<std::string> paths = this->workPaths();
  EXPECT_TRUE(std::regex_match(paths.at(0), std::regex(uuid + "0_A/"))) << paths.at(0);
  EXPECT_TRUE(std::regex_match(paths.at(1), std::regex(uuid + "1_B/"))) << paths.at(1);
  EXPECT_NE(paths[0].substr(0, 36), paths[1].substr(0, 36));
  EXPECT_EQ("", this->data.dumpPath);
}

TYPED_TEST(ChainTest, AModuleMayAddFurtherOnesWhileItRuns) {
  auto first = boost::make_shared<Worker>("First");
  first->action = [this](ModuleData&) {
    for (int i = 0; i < 50; ++i) this->chain.addModule(boost::make_shared<Worker>("More"));
  };
  this->chain.addModule(first);
  this->data.dumpPath = "out/";
  this->chain.processImp(&this->data);
  EXPECT_EQ("out/50_More/", this->workPaths().at(50));
}

TYPED_TEST(ChainTest, AnExceptionStopsTheChainInTheModulesDirectory) {
  auto failing = boost::make_shared<Worker>("Bad");
  failing->action = [](ModuleData&) { throw std::runtime_error("stop"); };
  this->chain.addModule(failing);
  this->chain.addModule(boost::make_shared<Worker>("Never"));
  this->data.dumpPath = "out/";
  EXPECT_THROW(this->chain.processImp(&this->data), std::runtime_error);
  EXPECT_EQ("out/0_Bad/", this->data.dumpPath);
  EXPECT_EQ(1u, this->workPaths().size());
}

TYPED_TEST(ChainTest, StartAndEndOfEachModuleAreLogged) {
  this->chain.addModule(boost::make_shared<Worker>("100%s"));
  const auto child = test_support::runInChild([this] {
    InitRootLogger("none");
    this->data.dumpPath = "out/";
    this->chain.processImp(&this->data);
    TypeParam().processImp(&this->data);
  });
  const std::regex lines(
      R"([^]*INFO  - Start module 100%s \[[^]*INFO  - End module 100%s \[[^\n]*\n)");
  EXPECT_TRUE(std::regex_match(child.output, lines)) << child.output;
}

TYPED_TEST(ChainTest, AChainReadFromJsonWritesBackTheSameModules) {
  cppbind::ClassRegister reg;
  reg.regClass<TypeParam>("Chain");
  reg.regClass<Add>("Add");
  cppbind::JsonDecodeBinder binder(&reg);
  const Json::Value form = json(
      R"({"chain": {"modules": [{"Add": {"amount": 2, "from": "2024-03-05 00:00:00"}},
          {"Chain": {"modules": [{"ADD": {"amount": 40, "from": "not-a-date-time"}}]}}]}})");
  boost::shared_ptr<Module> module;
  binder.bindDynamicType(form, module);
  EXPECT_EQ(form, module->getJsonValue4Bind());
  this->data.dumpPath = "out/";
  module->process(&this->data);
  EXPECT_EQ(42, this->data.steps);
  EXPECT_TRUE(fs::exists("out/1_Chain/0_ADD/module_stat.json"));
  EXPECT_TRUE(this->chain.getJsonValue4Bind().isNull()) << "one made by hand has no form";
}

TEST(ChainedModuleTest, BindingTwiceAppendsAllOrNothing) {
  cppbind::ClassRegister reg;
  reg.regClass<Add>("Add");
  cppbind::JsonDecodeBinder binder(&reg);
  ChainedModule::Data4Bind record;
  binder.decode(json(R"({"modules": [{"Add": {"amount": 1}}]})"), record);
  binder.decode(json(R"({"modules": [{"Add": {"amount": 2}}]})"), record);
  EXPECT_EQ(2u, record.modules.size());
  EXPECT_THROW(binder.decode(json(R"({"modules": [{"Add": {"amount": 3}}, 5]})"), record),
               cppbind::ParseErrorException);
  EXPECT_EQ(2u, record.modules.size());
  record.setBind(nullptr, false);
  EXPECT_EQ(2u, ChainedModule(record).getData4Bind().modules.size());
}

TEST(ChainedModuleTest, TheSecondKindCountsAModuleWhileItRunsAndReadsIntoItself) {
  const test_support::TemporaryDirectory directory;
  RecordingData data;
  data.dumpPath = "out/";
  auto worker = boost::make_shared<Worker>();
  long counted = 0;
  worker->action = [&](ModuleData&) { counted = worker.use_count(); };
  ChainedModule first;
  first.addModule(worker);
  first.processImp(&data);
  EXPECT_EQ(2, counted);
  ChainedModuleV2 second;
  second.addModule(worker);
  second.processImp(&data);
  EXPECT_EQ(4, counted);

  cppbind::ClassRegister reg;
  reg.regClass<Add>("Add");
  cppbind::JsonDecodeBinder binder(&reg);
  binder.decode(json(R"({"modules": [{"Add": {"amount": 1}}]})"), second);
  second.setBind(nullptr, false);
  EXPECT_EQ(2u, second.getModules().size());
}

TEST(ChainedModuleTest, TheSecondKindStopsAtANullModule) {
  ChainedModuleV2 chain;
  chain.addModule(nullptr);
  RecordingData data;
  const auto child = test_support::runInChild([&] { chain.processImp(&data); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_EQ(0u, child.errors.find("Expression 'px != 0' is false in function '"));
}

}  // namespace module_test
