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
#elif defined(_ENABLE_PER_THREAD_LOCALE)
#include <string>

namespace libvarrow::base {

/// The same with the C library of Windows. Does nothing where that has no locales of threads.
class ClassicNumbers {
 public:
  ClassicNumbers() {
    if (*::localeconv()->decimal_point == '.') return;
    modeBefore_ = ::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    if (modeBefore_ == kNone) return;
    before_ = ::setlocale(LC_NUMERIC, nullptr);
    ::setlocale(LC_NUMERIC, "C");
  }
  ~ClassicNumbers() {
    if (modeBefore_ == kNone) return;
    ::setlocale(LC_NUMERIC, before_.c_str());
    ::_configthreadlocale(modeBefore_);
  }
  ClassicNumbers(const ClassicNumbers&) = delete;
  ClassicNumbers& operator=(const ClassicNumbers&) = delete;

 private:
  static constexpr int kNone = -1;

  int modeBefore_ = kNone;
  std::string before_;
};

}  // namespace libvarrow::base
#else
namespace libvarrow::base {
class ClassicNumbers {};
}  // namespace libvarrow::base
#endif
