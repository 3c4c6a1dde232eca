#include "cppbind/ParseErrorException.h"

#include <new>
#include <utility>

#include "base/out_of_memory.h"
#include "base/system_text.h"

namespace cppbind {

ParseErrorException::ParseErrorException(std::string message) : message_(std::move(message)) {
  rebuildWhat();
}

ParseErrorException::ParseErrorException(std::string pathElement, std::string message)
    : path_{std::move(pathElement)}, message_(std::move(message)) {
  rebuildWhat();
}

void ParseErrorException::addPathFront(std::string element) {
  path_.insert(path_.begin(), std::move(element));
  rebuildWhat();
}

std::string ParseErrorException::pathText() const {
  std::string text;
  for (const std::string& element : path_) {
    const bool isIndex = !element.empty() && element.front() == '[';
    if (!text.empty() && !isIndex) text += '.';
    text += element;
  }
  return text;
}

void ParseErrorException::rebuildWhat() {
  // Each for itself: the message may be that of a host's exception.
  what_ = libvarrow::base::systemText(pathText());
  if (!what_.empty()) what_ += ": ";
  what_ += libvarrow::base::systemText(message_);
}

ClassMissRegException::ClassMissRegException(const std::string& className)
    : ParseErrorException(className + " miss register") {}

void rethrowWithPath(std::string element) {
  try {
    throw;
  } catch (ParseErrorException& error) {
    error.addPathFront(std::move(element));
    throw;
  } catch (const std::exception& error) {
    if (libvarrow::base::isOutOfMemory(error)) throw std::bad_alloc();
    throw ParseErrorException(std::move(element), error.what());
  }
}

void rethrowFromClass(const std::string& className) {
  try {
    throw;
  } catch (const ParseErrorException&) {
    throw;
  } catch (...) {
    rethrowWithPath(className);
  }
}

// Defined here, so that an error outlives the plug-in that threw it.
ParseErrorException::~ParseErrorException() = default;
ClassMissRegException::~ClassMissRegException() = default;

}  // namespace cppbind
