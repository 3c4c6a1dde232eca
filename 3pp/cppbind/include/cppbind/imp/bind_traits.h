// How a class declares its fields, settled at compile time.
#pragma once

#include <boost/shared_ptr.hpp>
#include <type_traits>
#include <utility>
#include <vector>

#include "cppbind/Object.h"

namespace cppbind {

class Binder;

namespace detail {

template <class T, class = void>
struct HasSetBind : std::false_type {};
template <class T>
struct HasSetBind<
    T, std::void_t<decltype(std::declval<T&>().setBind(static_cast<Binder*>(nullptr), true))>>
    : std::true_type {};

template <class T, class = void>
struct HasRecord : std::false_type {};
template <class T>
struct HasRecord<T, std::void_t<typename T::Data4Bind>>
    : std::is_constructible<T, typename T::Data4Bind&> {};

template <class T, class = void>
struct RendersItself : std::false_type {};
template <class T>
struct RendersItself<T, std::void_t<decltype(std::declval<const T&>().toJsonValue4Bind())>>
    : std::true_type {};

template <class T>
struct IsObjectPointer : std::false_type {};
template <class T>
struct IsObjectPointer<boost::shared_ptr<T>> : std::is_base_of<Object, T> {};

template <class T>
struct IsDynamicList : std::false_type {};
template <class T>
struct IsDynamicList<std::vector<T>> : IsObjectPointer<T> {};

// A parameter of this type does not take part in deducing T.
template <class T>
struct IdentityOf {
  using type = T;
};
template <class T>
using Identity = typename IdentityOf<T>::type;

}  // namespace detail

/// `T` has the operation setBind(Binder*, bool).
template <class T>
constexpr bool hasSetBind = detail::HasSetBind<T>::value;

/// `T` has no setBind, but a record `T::Data4Bind` to be read and constructed from.
template <class T>
constexpr bool bindsThroughRecord = !hasSetBind<T> && detail::HasRecord<T>::value;

/// `T` has its own toJsonValue4Bind() and fromJsonValue4Bind(json), as statistics do.
template <class T>
constexpr bool rendersItself = !hasSetBind<T> && detail::RendersItself<T>::value;

/// `T` is a std::vector of boost::shared_ptr to a class derived from Object.
template <class T>
constexpr bool isDynamicList = detail::IsDynamicList<T>::value;

}  // namespace cppbind
