// How a class declares its fields, settled at compile time.
#pragma once

#include <boost/shared_ptr.hpp>
#include <memory>
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

// A class that names setBind makes &Both::setBind ambiguous, also when its own is private or has
// other parameters.
struct NamesSetBind {
  int setBind;
};
template <class T>
struct AndSetBind : T, NamesSetBind {};

template <class T, class = void>
struct MentionsSetBind : std::bool_constant<std::is_class_v<T> && !std::is_final_v<T>> {};
template <class T>
struct MentionsSetBind<T, std::enable_if_t<std::is_class_v<T> && !std::is_final_v<T>,
                                           std::void_t<decltype(&AndSetBind<T>::setBind)>>>
    : std::false_type {};

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

// Pointers to objects that binding does not know.
template <class T>
struct IsForeignObjectPointer : std::false_type {};
template <class T>
struct IsForeignObjectPointer<T*> : std::is_base_of<Object, T> {};
template <class T>
struct IsForeignObjectPointer<std::shared_ptr<T>> : std::is_base_of<Object, T> {};
template <class T>
struct IsForeignObjectPointer<std::unique_ptr<T>> : std::is_base_of<Object, T> {};

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

/// `T` has a setBind, but not one that binders can call: private, or with other parameters.
template <class T>
constexpr bool hasUselessSetBind = !hasSetBind<T> && detail::MentionsSetBind<T>::value;

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
