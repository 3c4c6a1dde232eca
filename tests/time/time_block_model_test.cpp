// Random blocks, sound and broken, against plain walks over their slots.

#include <map>
#include <random>
#include <string>

#include "support/PlainBlock.h"
#include "support/support.h"

namespace {

using namespace test_support;

TEST(TimeBlockModelTest, AnswersAndChangesAreThoseOfAPlainWalkWhateverTheSlotsAre) {
  BlockAndModel both([random = std::mt19937(20240301)](int n) mutable {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  });
  std::map<std::string, int> compared;
  for (int i = 0; i < 15000 && !HasFailure(); ++i) {
    both.start();
    for (int step = 0; step < 8; ++step) {
      SCOPED_TRACE(text(both.block()));
      both.step([&](const std::string& what, const std::string& plain, const std::string& found) {
        EXPECT_EQ(plain, found) << what;
        ++compared[what];
      });
    }
  }
  EXPECT_EQ(compared.size(), 20u);
  for (const auto& [what, count] : compared) EXPECT_GT(count, 2000) << what;
}

}  // namespace
