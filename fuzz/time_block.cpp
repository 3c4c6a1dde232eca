// Fuzzes changes and queries of a calendar against reference models.
#include <fuzzer/FuzzedDataProvider.h>

#include "cppbind/imp/binder.h"
#include "harness.h"
#include "support/BlockAndModel.h"

namespace {

using namespace test_support;

// Text has whole seconds, which may change the order of slots; reading sorts them again.
std::string throughJson(TimeBlock& block) {
  const Json::Value json = cppbind::JsonEncodeBinder().encode(block);
  cppbind::JsonDecodeBinder().decode(json, block);
  return text(block);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider bytes(data, size);
  BlockAndModel both([&](int n) { return bytes.ConsumeIntegralInRange(0, n - 1); });
  both.start();
  // Few slots, as a comparison visits all of them.
  for (int step = 0;
       step < 40 && bytes.remaining_bytes() > 0 && both.block().getBlocks().size() < 30; ++step) {
    both.step([](const char* what, const std::string& plain, const std::string& found) {
      fuzz::requireSame(plain, found, what);
    });
    if (step % 8 != 7) continue;
    const std::string once = throughJson(both.block());
    fuzz::requireSame(once, throughJson(both.block()), "through JSON");
    both.start(Slots(both.block().getBlocks()));
  }
  return 0;
}
