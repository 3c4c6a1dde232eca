// Files that another program has open.
#pragma once

#include <boost/system/error_code.hpp>

namespace libvarrow::base {

/// Tells how often an operation on a file is worth another try. On Windows a file can be neither
/// removed nor renamed while a virus scanner or a viewer has it open, mostly for moments; a run of
/// hours must not end for that.
///
///     FilePatience patience;
///     do boost::filesystem::rename(from, to, error); while (patience.isWorthATry(error));
class FilePatience {
 public:
  /// Returns true after a pause when `error` may be that of an open file; the pauses of one object
  /// are four seconds at most. Returns false at once for success and other errors, on POSIX systems
  /// always.
  bool isWorthATry(const boost::system::error_code& error);

 private:
  static bool mayBeOpen(const boost::system::error_code& error) noexcept;

  int pauses_ = 0;
};

}  // namespace libvarrow::base
