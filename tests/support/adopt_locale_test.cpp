// Whether a run under another locale is one.
#include <clocale>
#include <cstdlib>
#include <locale>

#include "support/support.h"

TEST(AdoptLocale, TheLocaleIsThatOfTheEnvironmentOrC) {
  const char* name = std::getenv("VARROW_ADOPT_LOCALE") != nullptr ? std::getenv("LC_ALL") : "C";
  EXPECT_STREQ(name, std::locale().name().c_str());
  EXPECT_STREQ(name, std::setlocale(LC_ALL, nullptr));
}
