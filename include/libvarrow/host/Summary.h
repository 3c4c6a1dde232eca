// The result that a run prints.
#pragma once

#include <json/forwards.h>

#include <memory>
#include <string>

#include "libvarrow/host/Export.h"

namespace libvarrow {

/// Result of a run: labelled facts, printed in aligned lines or, with --json, as an object. In
/// lines, control characters of texts are replaced by blanks.
class LIBVARROW_HOST_API Summary {
 public:
  Summary();
  Summary(const Summary&) = delete;
  Summary& operator=(const Summary&) = delete;
  ~Summary();

  /// Adds a fact: add("makespan", "55"). In JSON, facts with the same label form one list.
  void add(const std::string& label, const std::string& text);
  /// Adds a fact whose value JSON keeps as it is: addValue("makespan", 55) gives 55, not "55".
  void addValue(const std::string& label, const Json::Value& value);

  /// Returns the facts as lines, "makespan     55\n", or as a JSON object.
  std::string text(bool asJson) const;

 private:
  struct Imp;
  std::unique_ptr<Imp> imp_;
};

}  // namespace libvarrow
