// Faults of a JSON text, with their places.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cppbind/Export.h"

namespace cppbind {

/// Weight of a fault.
enum class Severity {
  Error,   ///< the text cannot be loaded
  Warning  ///< the text can be loaded, but hardly means what it says
};

/// One fault of a JSON text.
struct CPPBIND_API Fault {
  Severity severity = Severity::Error;  ///< the weight
  /// The path of the exception that loading throws; see ParseErrorException. Of an unknown key or
  /// class it is the path of the object that has the key.
  std::vector<std::string> path{};
  std::string message{};   ///< the message of that exception, in UTF-8: "not found"
  std::string hint{};      ///< the known key, class or other name that was probably meant; or empty
  std::size_t line = 0;    ///< begins at 1; 0: the fault has no place, as of a missing file
  std::size_t column = 0;  ///< begins at 1, in code points; see TextPosition

  /// Returns path and message as what() of the exception does, but in UTF-8 on every system:
  /// "modules[2].Plan.rule: not found".
  std::string what() const;
  /// Returns the fault in one line without the file's name, as compilers write theirs:
  /// "3:7: error: modules[2].Plan.rule: not found; did you mean \"rule\"?".
  std::string text() const;
};

/// The faults of one JSON text.
struct CPPBIND_API Faults {
  /// The maximum length of `first`.
  static constexpr std::size_t kMaxListed = 100;

  /// The faults that come first in the text, sorted by place. Errors and warnings are mixed.
  std::vector<Fault> first{};
  std::size_t errorCount = 0;    ///< of all errors, also those not listed
  std::size_t warningCount = 0;  ///< of all warnings, also those not listed

  /// Returns true when the text cannot be loaded.
  bool hasErrors() const { return errorCount > 0; }
  /// Returns the number of faults that are not listed.
  std::size_t unlistedCount() const { return errorCount + warningCount - first.size(); }
};

}  // namespace cppbind
