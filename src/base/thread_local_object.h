// Objects that are kept for each thread because they cost more to make than to use.
#pragma once

namespace libvarrow::base {

/// What `use` makes of the calling thread's own object, which `make` makes on first use. A host's
/// static objects go after those of its main thread: from then on there is one for each call.
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
