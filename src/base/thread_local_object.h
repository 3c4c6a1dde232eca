// Thread-local objects that cost more to make than to use.
#pragma once

namespace libvarrow::base {

/// Returns the result of `use` for the calling thread's object, which `make` makes at first use.
/// Static objects of a host are destroyed after the main thread's object: from then on every call
/// makes a temporary one.
template <class Make, class Use>
auto withThreadLocal(Make make, Use use) {
  thread_local bool isGone = false;
  struct Own {
    decltype(make()) object;
    ~Own() { isGone = true; }
  };
  if (isGone) {
    auto&& temporary = make();
    return use(temporary);
  }
  thread_local Own own{make()};
  return use(own.object);
}

}  // namespace libvarrow::base
