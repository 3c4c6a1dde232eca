#include "cppbind/CodeOwner.h"

#include <utility>

#include "base/NeverDestroyed.h"

namespace cppbind {

namespace {

// A pointer, as it needs no destructor at the end of a thread.
thread_local const CodeOwner* current = nullptr;

}  // namespace

const CodeOwner& currentCodeOwner() {
  static libvarrow::base::NeverDestroyed<const CodeOwner> none;
  return current == nullptr ? *none : *current;
}

CodeOwnerScope::CodeOwnerScope(CodeOwner owner)
    : owner_(std::move(owner)), previous_(std::exchange(current, &owner_)) {}

CodeOwnerScope::~CodeOwnerScope() {
  current = previous_;
}

}  // namespace cppbind
