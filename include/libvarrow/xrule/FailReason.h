// The base of everything that says why a check failed.
#pragma once

#include <json/value.h>

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

/// Why a check failed, for programs and for people. A value of its own: it keeps no reference to
/// what was checked. One thread at a time.
class LIBVARROW_API FailReason {
 public:
  FailReason() = default;
  FailReason(const FailReason&) = default;
  FailReason(FailReason&&) = default;
  FailReason& operator=(const FailReason&) = default;
  FailReason& operator=(FailReason&&) = default;
  virtual ~FailReason();

  /// The reason for programs, as each class documents.
  virtual Json::Value getJsonValueInfo() const = 0;

  /// The reason for people: dumpJsonValueInfo() unless a class says it better.
  virtual std::string toStr() const;

  /// getJsonValueInfo() as text indented by tabs, with a line end.
  std::string dumpJsonValueInfo() const;
};

}  // namespace libvarrow
