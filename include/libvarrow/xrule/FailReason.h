// The base of all reasons why a check failed.
#pragma once

#include <json/value.h>

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// The reason why a check failed, for programs and for people. An independent value: it keeps no
/// reference to the checked objects. Not thread-safe.
class LIBVARROW_API FailReason {
 public:
  FailReason() = default;
  FailReason(const FailReason&) = default;
  FailReason(FailReason&&) = default;
  FailReason& operator=(const FailReason&) = default;
  FailReason& operator=(FailReason&&) = default;
  virtual ~FailReason();

  /// Returns the reason for programs, as each class documents.
  virtual Json::Value getJsonValueInfo() const = 0;

  /// Returns the reason for people: dumpJsonValueInfo() unless a class overrides it.
  virtual std::string toStr() const;

  /// Returns getJsonValueInfo() as text indented by tabs, with a line end.
  std::string dumpJsonValueInfo() const;
};

}  // namespace libvarrow
