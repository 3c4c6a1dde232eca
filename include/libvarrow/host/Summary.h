// The result that a run prints.
#pragma once

#include <memory>
#include <string>

#include "libvarrow/host/Export.h"

namespace libvarrow {

/// Result of a run: labelled facts, printed in aligned lines or, with --json, as an object. Control
/// characters of texts are replaced by blanks.
class LIBVARROW_HOST_API Summary {
 public:
  Summary();
  ~Summary();
  Summary(const Summary&) = delete;
  Summary& operator=(const Summary&) = delete;

  /// Adds a fact: add("makespan", "55").
  void add(const std::string& label, const std::string& text);

 private:
  friend class Host;
  struct Imp;
  std::unique_ptr<Imp> imp_;
};

}  // namespace libvarrow
