#include "cppbind/CodeOwner.h"

#include <utility>

namespace cppbind {

namespace {

CodeOwner& current() {
  thread_local CodeOwner owner;
  return owner;
}

}  // namespace

const CodeOwner& currentCodeOwner() {
  return current();
}

CodeOwnerScope::CodeOwnerScope(CodeOwner owner)
    : previous_(std::exchange(current(), std::move(owner))) {}

CodeOwnerScope::~CodeOwnerScope() {
  current() = std::move(previous_);
}

}  // namespace cppbind
