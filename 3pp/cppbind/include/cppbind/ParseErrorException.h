// Exceptions for JSON that cannot be read into objects.
#pragma once

#include <exception>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cppbind/Export.h"

namespace cppbind {

namespace detail {
class Collector;
struct FaultNotes;
}  // namespace detail

/// Exception for JSON that does not fit the object it is read into. Its path names the place: keys,
/// list indices ("[2]") and class names, from the outermost object inward.
///
/// what() joins path and message: "modules[2].Dispatch.rule: not found". It is in the encoding of
/// the system, as what() of other exceptions is, for a console or a log; path and message are
/// UTF-8, as the JSON is. (A message that another exception had may be in the encoding of the
/// system, too.)
class CPPBIND_API ParseErrorException : public std::exception {
 public:
  /// Creates an error without a path.
  explicit ParseErrorException(std::string message);
  /// Creates an error with a path of one element.
  ParseErrorException(std::string pathElement, std::string message);
  ParseErrorException(const ParseErrorException&) = default;
  ParseErrorException& operator=(const ParseErrorException&) = default;
  ~ParseErrorException() override;

  /// Adds `element` in front of the path. Each level adds its element when the error passes it.
  void addPathFront(std::string element);

  /// Returns the path, from the outermost object inward; may be empty.
  const std::vector<std::string>& path() const noexcept { return path_; }
  /// Returns the error without the path: "not found".
  const std::string& message() const noexcept { return message_; }
  /// Returns the path as text, "modules[2].Dispatch.rule"; may be empty.
  std::string pathText() const;
  /// Returns path and message; without a path, the message alone.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  friend class detail::Collector;

  void rebuildWhat();

  std::vector<std::string> path_;
  std::string message_;
  std::string what_;
  std::shared_ptr<const detail::FaultNotes> notes_;  // null unless all faults are collected
};

/// Exception for a class name that is not registered, or that names a class of the wrong type.
/// Message: class name + " miss register".
class CPPBIND_API ClassMissRegException : public ParseErrorException {
 public:
  /// Sets the message; `className` is spelt as in the JSON.
  explicit ClassMissRegException(const std::string& className);
  ClassMissRegException(const ClassMissRegException&) = default;
  ClassMissRegException& operator=(const ClassMissRegException&) = default;
  ~ClassMissRegException() override;
};

/// Rethrows the current exception with `element` in front of its path; call it in a catch block. A
/// ParseErrorException keeps its type; any other std::exception becomes one with the same text,
/// except std::bad_alloc, which passes unchanged: it does not depend on the place, and there may be
/// no memory for a path.
[[noreturn]] CPPBIND_API void rethrowWithPath(std::string element);

/// Does the same for an exception from a class's factory, with the class name as path element. A
/// ParseErrorException passes unchanged, since its path already has the name.
[[noreturn]] CPPBIND_API void rethrowFromClass(const std::string& className);

/// Runs `body` and adds `key` to the path of its exceptions.
template <class Body>
void withKey(std::string_view key, Body&& body) {
  try {
    body();
  } catch (...) {
    rethrowWithPath(std::string(key));
  }
}

/// Runs `body`, which creates an object of the class `className` through a register. The path of
/// its exceptions contains that name.
template <class Body>
void withClass(const std::string& className, Body&& body) {
  try {
    body();
  } catch (...) {
    rethrowFromClass(className);
  }
}

/// Runs `body` and adds "[index]" to the path of its exceptions.
template <class Body>
void withIndex(std::size_t index, Body&& body) {
  try {
    body();
  } catch (...) {
    rethrowWithPath("[" + std::to_string(index) + "]");
  }
}

}  // namespace cppbind
