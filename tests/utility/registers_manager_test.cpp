// Named class registries.
#include "libvarrow/utility/RegistersManager.h"
#include "support/support.h"

namespace {

using libvarrow::RegistersManager;

struct Thing : cppbind::Object {};

struct Box {
  boost::shared_ptr<Thing> thing;
  void setBind(cppbind::Binder* binder, bool) { binder->bind("thing", thing); }
};

TEST(RegistersManagerTest, ARegistryIsDestroyedWithItsLastClass) {
  const auto things = RegistersManager::createRegister("things");
  things->regClass<Thing>("Thing");
  things->regClass<Thing>("Other");
  EXPECT_EQ(things, RegistersManager::createRegister("things"));
  EXPECT_EQ(things.get(), RegistersManager::getRegister("things"));
  EXPECT_EQ(nullptr, RegistersManager::getRegister("Things"));
  EXPECT_FALSE(RegistersManager::unregister("things", "Nothing"));
  EXPECT_TRUE(RegistersManager::unregister("things", "OTHER"));
  EXPECT_EQ(things.get(), RegistersManager::getRegister("things"));
  EXPECT_TRUE(RegistersManager::unregister("things", "thing"));
  EXPECT_EQ(nullptr, RegistersManager::getRegister("things"));
  EXPECT_TRUE(things->empty());

  RegistersManager::createRegister("nothing");
  RegistersManager::unregisterAllOf(boost::make_shared<cppbind::LoadedCode>());
  EXPECT_NE(nullptr, RegistersManager::getRegister("nothing"));
  EXPECT_FALSE(RegistersManager::unregister("nothing", "Thing"));
  EXPECT_EQ(nullptr, RegistersManager::getRegister("nothing"));
}

TEST(RegistersManagerTest, ABinderUsesANamedRegistryTemporarily) {
  cppbind::ClassRegister own;
  own.regClass<Thing>("Mine");
  RegistersManager::createRegister("others")->regClass<Thing>("Other");
  cppbind::JsonDecodeBinder decoder(&own);
  Json::Value json = test_support::json(R"({"thing": {"Other": {}}})");
  cppbind::Binder binder(&decoder, json);
  Box box;
  const auto read = [&] { return test_support::errorOf([&] { box.setBind(&binder, true); }); };
  EXPECT_EQ("thing: Other miss register", read());
  auto backup = RegistersManager::useRegister("others", &binder);
  EXPECT_EQ("no error", read());
  EXPECT_EQ("Other", box.thing->dumpStr());
  auto unknown = RegistersManager::useRegister("unknown", &binder);
  EXPECT_EQ("thing: no class _register", read());
  unknown.reset();
  backup.reset();
  EXPECT_EQ("thing: Other miss register", read());
  RegistersManager::unregister("others", "Other");
}

}  // namespace
