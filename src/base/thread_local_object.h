// Thread-local objects that cost more to make than to use.
#pragma once

namespace libvarrow::base {

/// Returns the result of `use` for the calling thread's object, which `make` makes at first use.
/// Static objects of a host are destroyed after the main thread's object: from then on every call
/// makes a temporary one. So does every call with mingw-w64, which frees the memory of a thread's
/// objects before it calls their destructors.
template <class Make, class Use>
auto withThreadLocal(Make make, Use use) {
#if defined(__MINGW32__)
  auto&& object = make();
  return use(object);
#else
  thread_local bool isDestroyed = false;
  struct Holder {
    decltype(make()) object;
    ~Holder() { isDestroyed = true; }
  };
  if (isDestroyed) {
    auto&& temporary = make();
    return use(temporary);
  }
  thread_local Holder holder{make()};
  return use(holder.object);
#endif
}

}  // namespace libvarrow::base
