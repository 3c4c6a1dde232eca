// Random blocks, in order and out of order, against reference models.
#include <map>
#include <random>
#include <string>

#include "support/BlockAndModel.h"
#include "support/support.h"

namespace {

using namespace test_support;

TEST(TimeBlockModelTest, AnswersAndChangesAreThoseOfTheModels) {
  BlockAndModel both([random = std::mt19937(20240301)](int n) mutable {
    return static_cast<int>(random() % static_cast<unsigned>(n));
  });
  std::map<std::string, int> compared;
  std::size_t questions = 0;
  for (int i = 0; i < 10000 && !HasFailure(); ++i) {
    both.start();
    for (int step = 0; step < 8; ++step) {
      SCOPED_TRACE(text(both.block()));
      questions = both.step(
          [&](const std::string& what, const std::string& expected, const std::string& found) {
            EXPECT_EQ(expected, found) << what;
            ++compared[what];
          });
    }
  }
  EXPECT_EQ(questions, compared.size());
  for (const auto& [what, count] : compared) EXPECT_LT(300, count) << what;
}

}  // namespace
