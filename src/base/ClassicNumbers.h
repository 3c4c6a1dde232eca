// Numbers that C functions print have a decimal point, whatever locale the host set.
#pragma once

#include <locale.h>  // NOLINT(modernize-deprecated-headers): the thread's locale is not in <clocale>

#if defined(LC_NUMERIC_MASK)
#include <langinfo.h>

namespace libvarrow::base {

/// For the calling thread, while it lives.
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
  // The host's locale in all but numbers, as it was when first needed: making one each time leaks.
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
