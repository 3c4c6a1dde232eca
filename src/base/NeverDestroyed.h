// Objects of static storage that outlive every static object of a host.
#pragma once

#include <new>
#include <utility>

namespace libvarrow::base {

/// Holder of an intentionally leaked `T`: static objects of a host are destroyed in an order that
/// the library does not know, and some use the `T` in their destructors.
///
///     std::map<std::string, int>& counters() {
///       static NeverDestroyed<std::map<std::string, int>> map;
///       return *map;
///     }
template <class T>
class NeverDestroyed {
 public:
  template <class... Arguments>
  explicit NeverDestroyed(Arguments&&... arguments) {
    ::new (static_cast<void*>(storage_)) T(std::forward<Arguments>(arguments)...);
  }
  NeverDestroyed(const NeverDestroyed&) = delete;
  NeverDestroyed& operator=(const NeverDestroyed&) = delete;

  T& operator*() { return *std::launder(reinterpret_cast<T*>(storage_)); }
  T* operator->() { return &**this; }

 private:
  alignas(T) unsigned char storage_[sizeof(T)];
};

}  // namespace libvarrow::base
