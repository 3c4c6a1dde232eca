// A string builder that is lighter than a standard stream.
#pragma once

#include <boost/date_time/gregorian/gregorian_types.hpp>
#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <string>
#include <type_traits>

#include "libvarrow/Export.h"

namespace libvarrow {

/// A string builder whose `<<` appends values as text, the same under every locale. A value; not
/// thread-safe.
///
///     FastStringStream line;
///     line << "job " << 7 << ',' << 12.5 << ',' << true << ',' << start;
///     file << line.str();
class LIBVARROW_API FastStringStream {
 public:
  ///@{
  /// Appends the character itself.
  FastStringStream& operator<<(char value);
  FastStringStream& operator<<(signed char value);
  FastStringStream& operator<<(unsigned char value);
  ///@}
  ///@{
  /// Appends decimal digits.
  FastStringStream& operator<<(int value);
  FastStringStream& operator<<(unsigned int value);
  FastStringStream& operator<<(long value);
  FastStringStream& operator<<(unsigned long value);
  FastStringStream& operator<<(long long value);
  FastStringStream& operator<<(unsigned long long value);
  ///@}
  ///@{
  /// Appends enough significant digits (9, 17, 21) to read back the same value; "inf", "-inf",
  /// "nan" or "-nan".
  FastStringStream& operator<<(float value);
  FastStringStream& operator<<(double value);
  FastStringStream& operator<<(long double value);
  ///@}
  /// Appends the characters up to the terminating zero; `value` is not null.
  FastStringStream& operator<<(const char* value);
  /// Appends all characters, zeros included.
  FastStringStream& operator<<(const std::string& value);
  /// Appends "true" or "false".
  FastStringStream& operator<<(bool value);
  ///@{
  /// Appends time2str of the value.
  FastStringStream& operator<<(const boost::gregorian::date& value);
  FastStringStream& operator<<(const boost::posix_time::ptime& value);
  FastStringStream& operator<<(const boost::posix_time::time_duration& value);
  ///@}
  /// Deleted: other pointers would convert to bool.
  template <class T, class = std::enable_if_t<!std::is_same_v<std::remove_cv_t<T>, char>>>
  FastStringStream& operator<<(T* value) = delete;

  ///@{
  /// Returns the text built so far; the caller may change it.
  std::string& str() { return text_; }
  const std::string& str() const { return text_; }
  ///@}

 private:
  std::string text_;
};

}  // namespace libvarrow
