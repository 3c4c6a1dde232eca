// A decimal point in the numbers that C functions print, independent of the host's locale.
#pragma once

#include <locale.h>  // NOLINT(modernize-deprecated-headers): the thread's locale is not in <clocale>

#if defined(LC_NUMERIC_MASK)
#include <langinfo.h>

namespace libvarrow::base {

/// RAII guard: numbers of the calling thread have the "C" locale's decimal point.
class ClassicNumbers {
 public:
  ClassicNumbers() {
    if (*::nl_langinfo(RADIXCHAR) != '.') before_ = ::uselocale(classic());
  }
  ~ClassicNumbers() {
    if (before_ != nullptr) ::uselocale(before_);
  }
  ClassicNumbers(const ClassicNumbers&) = delete;
  ClassicNumbers& operator=(const ClassicNumbers&) = delete;

 private:
  // The host's locale except for numbers, as at the first call; made once, as it is never freed.
  static locale_t classic() {
    static const locale_t locale =
        ::newlocale(LC_NUMERIC_MASK, "C", ::duplocale(::uselocale(nullptr)));
    return locale;
  }

  locale_t before_ = nullptr;
};

}  // namespace libvarrow::base
#else
namespace libvarrow::base {
class ClassicNumbers {};
}  // namespace libvarrow::base
#endif
