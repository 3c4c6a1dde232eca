// Named registries whose making runs out of memory.
#include "libvarrow/utility/RegistersManager.h"
#include "reliability/failing_new.h"
#include "support/support.h"

namespace {

using libvarrow::RegistersManager;

TEST(RegistersMemoryTest, ARegistryIsMadeWholeOrNotAtAll) {
  const std::string name(100, 'r');
  const auto failed = test_support::failEachAllocation(
      [&] { RegistersManager::createRegister(name); },
      [&](bool isDone) {
        EXPECT_EQ(isDone, RegistersManager::getRegister(name) != nullptr);
        RegistersManager::unregisterAllOf(boost::make_shared<cppbind::LoadedCode>());
        EXPECT_FALSE(RegistersManager::unregister(name, "None"));
      });
  EXPECT_LT(1u, failed);
}

}  // namespace
