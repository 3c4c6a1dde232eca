// The errors of reading JSON into objects.
#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "cppbind/Export.h"

namespace cppbind {

/// JSON that does not fit the object it is read into. Says where: the path holds keys, list
/// indices ("[2]") and class names from the outermost object inward.
///
/// what() joins path and message: "modules[2].Dispatch.rule: not found".
class CPPBIND_API ParseErrorException : public std::exception {
 public:
  /// Without a path.
  explicit ParseErrorException(std::string message);
  /// With a path of one element.
  ParseErrorException(std::string pathElement, std::string message);
  ParseErrorException(const ParseErrorException&) = default;
  ParseErrorException& operator=(const ParseErrorException&) = default;
  ~ParseErrorException() override;

  /// Adds the next outer element. Each level that an error passes adds its own.
  void addPathFront(std::string element);

  /// From the outermost object inward; empty when there is none.
  const std::vector<std::string>& path() const noexcept { return path_; }
  /// What is wrong, without the path: "not found".
  const std::string& message() const noexcept { return message_; }
  /// The path as text, "modules[2].Dispatch.rule"; empty when there is none.
  std::string pathText() const;
  /// Path and message; the message alone when there is no path.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  void rebuildWhat();

  std::vector<std::string> path_;
  std::string message_;
  std::string what_;
};

/// A class name that no registry entry answers to, or that names a class of another kind than the
/// place needs. Message: class name + " miss register".
class CPPBIND_API ClassMissRegException : public ParseErrorException {
 public:
  /// `className`: as the JSON spells it.
  explicit ClassMissRegException(const std::string& className);
  ClassMissRegException(const ClassMissRegException&) = default;
  ClassMissRegException& operator=(const ClassMissRegException&) = default;
  ~ClassMissRegException() override;
};

/// Call in a catch block: throws the error in flight on, with `element` in front of its path. A
/// ParseErrorException keeps its type; any other std::exception becomes one with the same text.
/// std::bad_alloc passes as it is: it says nothing about the place, and there may be no memory for
/// a path.
[[noreturn]] CPPBIND_API void rethrowWithPath(std::string element);

/// The same for an error that left a class's factory, with the class name as path element. A
/// ParseErrorException passes as it is: it has that name already.
[[noreturn]] CPPBIND_API void rethrowFromClass(const std::string& className);

/// Runs `body`; what it throws gains `key` as path element.
template <class Body>
void withKey(std::string_view key, Body&& body) {
  try {
    body();
  } catch (...) {
    rethrowWithPath(std::string(key));
  }
}

/// Runs `body`, which creates an object of the class `className` through a registry; what it throws
/// has that name in its path.
template <class Body>
void withClass(const std::string& className, Body&& body) {
  try {
    body();
  } catch (...) {
    rethrowFromClass(className);
  }
}

/// Runs `body`; what it throws gains "[index]" as path element.
template <class Body>
void withIndex(std::size_t index, Body&& body) {
  try {
    body();
  } catch (...) {
    rethrowWithPath("[" + std::to_string(index) + "]");
  }
}

}  // namespace cppbind
