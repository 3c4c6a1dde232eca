// Modules that run others in order.

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <regex>
#include <stdexcept>

#include "libvarrow/module/ChainedModule.h"
#include "libvarrow/module/ChainedModuleV2.h"
#include "libvarrow/utility/UTFConverter.h"
#include "module/recording.h"
#include "support/support.h"

namespace module_test {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

// Both kinds run their modules in the same way.
template <class Chain>
class ChainTest : public InTemporaryDirectory {
 protected:
  ChainTest() {
    data.dumpPath = "out/";
    reg.regClass<Chain>("Chain");
    reg.regClass<Add>("Add");
  }

  RecordingData data;
  Chain chain;
  cppbind::ClassRegister reg;
  cppbind::JsonDecodeBinder binder{&reg};
};

using Chains = testing::Types<ChainedModule, ChainedModuleV2>;
TYPED_TEST_SUITE(ChainTest, Chains, );

TYPED_TEST(ChainTest, EveryModuleOfAChainHasANumberedDirectory) {
  auto twice = boost::make_shared<Worker>("A");
  twice->action = [this](ModuleData&) {
    for (int i = 0; i < 50; ++i) this->chain.addModule(boost::make_shared<Worker>("More"));
  };
  const std::string name = utility::fromUtf8("排产表é");
  const std::string utf8 = utility::toUtf8(name);  // as names of classes are
  for (const auto& module :
       {twice, boost::make_shared<Worker>(name), twice, boost::make_shared<Worker>(utf8)}) {
    this->chain.addModule(module);
  }
  this->chain.addModule(boost::make_shared<Worker>("a::B<C*>ℵ"));  // no file name of Windows
  this->chain.processImp(&this->data);
  const std::vector<std::string>& paths = this->data.workPaths;
  ASSERT_EQ(105u, paths.size());
  EXPECT_EQ("out/0_A/ out/1_" + name + "/ out/2_A/", paths[0] + " " + paths[1] + " " + paths[2]);
  EXPECT_EQ("out/3_" + name + "/", paths[3]);
  EXPECT_EQ("out/104_More/", paths[104]);
  EXPECT_TRUE(fs::exists(paths[4] + "module_stat.json"));
  EXPECT_EQ("out/", this->data.dumpPath);
  EXPECT_TRUE(fs::exists("out/1_" + name + "/module_stat.json"));
  EXPECT_FALSE(fs::exists("out/1_" + name + "/_cpu.prof"));
  twice->action = [](ModuleData&) { throw std::runtime_error("stop"); };
  EXPECT_THROW(this->chain.processImp(&this->data), std::runtime_error);
  EXPECT_EQ("out/0_A/", this->data.dumpPath);
  EXPECT_EQ(106u, paths.size());
}

TYPED_TEST(ChainTest, WithoutAPathEveryModuleGetsAFreshUuid) {
  for (const char* name : {"A", "B"}) this->chain.addModule(boost::make_shared<Worker>(name));
  this->data.dumpPath = "";
  this->chain.processImp(&this->data);
  const std::string uuid = "[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}";
  const std::vector<std::string>& paths = this->data.workPaths;
  EXPECT_TRUE(
      std::regex_match(paths.at(0) + paths.at(1), std::regex(uuid + "0_A/" + uuid + "1_B/")));
  EXPECT_NE(paths[0].substr(0, 36), paths[1].substr(0, 36));
  EXPECT_EQ("", this->data.dumpPath);
}

TYPED_TEST(ChainTest, AChainWritesTheJsonThatItWasReadFrom) {
  const Json::Value form = json(
      R"({"chain": {"modules": [{"Add": {"amount": 2, "from": "2024-03-05 00:00:00"}},
          {"Chain": {"modules": [{"ADD": {"amount": 40, "from": "not-a-date-time"}}]}}]}})");
  boost::shared_ptr<Module> module;
  this->binder.bindDynamicType(form, module);
  EXPECT_EQ(form, module->getJsonValue4Bind());
  module->process(&this->data);
  EXPECT_EQ(42, this->data.steps);
  EXPECT_TRUE(fs::exists("out/1_Chain/0_ADD/module_stat.json"));
  EXPECT_TRUE(this->chain.getJsonValue4Bind().isNull())
      << "a module that was not created by name has no form";
}

// Without the constructor from the record, the modules of the file would be lost silently.
struct Fixed : ChainedModule {
  void setBind(cppbind::Binder*, bool) {}
};
struct Undeclared : ChainedModule {
  struct Data4Bind {
    int size = 0;
  };
  explicit Undeclared(const Data4Bind& record);
};
static_assert(cppbind::hasUselessRecord<Undeclared> && !cppbind::hasUselessRecord<Fixed> &&
              !cppbind::hasUselessRecord<Module>);

using ChainedModuleTest = ChainTest<ChainedModule>;

TEST_F(ChainedModuleTest, BindingTwiceAppendsAllOrNothing) {
  const Json::Value one = json(R"({"modules": [{"Add": {"amount": 1}}]})");
  ChainedModule::Data4Bind record;
  binder.decode(one, record);
  binder.decode(one, record);
  EXPECT_THROW(binder.decode(json(R"({"modules": [{"Add": {"amount": 3}}, 5]})"), record),
               cppbind::ParseErrorException);
  record.setBind(nullptr, false);
  EXPECT_EQ(2u, ChainedModule(record).getData4Bind().modules.size());
}

}  // namespace module_test
