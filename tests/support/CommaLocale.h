// A global locale that changes the numbers that streams read and write.
#pragma once

#include <locale>

namespace test_support {

/// RAII guard: new streams write 1234.5 as "1.234,5".
class CommaLocale {
 public:
  CommaLocale() : before_(std::locale::global({std::locale::classic(), new Comma})) {}
  ~CommaLocale() { std::locale::global(before_); }

 private:
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  std::locale before_;
};

}  // namespace test_support
