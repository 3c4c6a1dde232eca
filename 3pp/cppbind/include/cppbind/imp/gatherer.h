// Goes on after a faulty element when all faults are collected.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "cppbind/Export.h"

namespace cppbind {

class JsonDecodeBinder;

namespace detail {

struct FaultGroup;

/// Reads values one after the other. A fault leaves at once with its place, unless the decoder
/// collects all faults: then the other values are read, too, and finish() throws.
class CPPBIND_API Gatherer {
 public:
  explicit Gatherer(const JsonDecodeBinder& decoder) : decoder_(decoder) {}
  Gatherer(const Gatherer&) = delete;
  Gatherer& operator=(const Gatherer&) = delete;

  /// Runs `body`. Its exceptions get "[index]" as path.
  template <class Body>
  void atIndex(std::size_t index, const Body& body) {
    try {
      body();
    } catch (...) {
      caughtAt(index);
    }
  }
  /// Runs `body`. Its exceptions get `key` as path.
  template <class Body>
  void atKey(const std::string& key, const Body& body) {
    try {
      body();
    } catch (...) {
      caughtAt(key);
    }
  }
  /// Runs `body`. Its exceptions get no path.
  template <class Body>
  void run(const Body& body) {
    try {
      body();
    } catch (...) {
      caught();
    }
  }
  /// Throws when there was a fault: one exception for all, which names the first.
  void finish() {
    if (group_ != nullptr) throwGroup();
  }

 private:
  struct Deleter {
    CPPBIND_API void operator()(FaultGroup* group) const;
  };

  // Each rethrows the current exception unless faults are collected.
  void caughtAt(std::size_t index);
  void caughtAt(const std::string& key);
  void caught();
  void keep();
  [[noreturn]] void throwGroup();

  const JsonDecodeBinder& decoder_;
  std::unique_ptr<FaultGroup, Deleter> group_;
};

}  // namespace detail

}  // namespace cppbind
