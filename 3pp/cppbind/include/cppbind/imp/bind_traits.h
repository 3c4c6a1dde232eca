// Compile-time traits: how a class declares its fields.
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

// True when `Use<T>` compiles.
template <class T, template <class> class Use, class = void>
struct Compiles : std::false_type {};
template <class T, template <class> class Use>
struct Compiles<T, Use, std::void_t<Use<T>>> : std::true_type {};

constexpr Binder* kAnyBinder = nullptr;
template <class T>
using SetBindCall = decltype(std::declval<T&>().setBind(kAnyBinder, true));
template <class T>
using LowerCaseCall = decltype(std::declval<T&>().setbind(kAnyBinder, true));
template <class T>
using UpperCaseCall = decltype(std::declval<T&>().SetBind(kAnyBinder, true));
template <class T>
using TitleCaseCall = decltype(std::declval<T&>().Setbind(kAnyBinder, true));
template <class T>
using SetBindAddress = decltype(&T::setBind);
template <class T>
using RenderCall = decltype(std::declval<const T&>().toJsonValue4Bind());

// In a class derived from T and Names, a name that T has too is ambiguous, even when T's is private
// or of another kind.
struct Names {
  int setBind;
  struct Data4Bind {};
};
template <class T>
struct AndNames : T, Names {};
template <class T>
using OtherSetBind = decltype(&AndNames<T>::setBind);
template <class T>
using OtherRecord = typename AndNames<T>::Data4Bind;

// No class can be derived from a final class, so its names are not detected.
template <class T, template <class> class Other, bool = std::is_class_v<T> && !std::is_final_v<T>>
struct Mentions : std::false_type {};
template <class T, template <class> class Other>
struct Mentions<T, Other, true> : std::negation<Compiles<T, Other>> {};

// T declares a setBind itself, which is not one of a base.
template <class T, class = void>
struct DeclaresSetBind : std::false_type {};
template <class T>
struct DeclaresSetBind<
    T, std::enable_if_t<std::is_same_v<decltype(&T::setBind), void (T::*)(Binder*, bool)>>>
    : std::true_type {};

// A record without members has no fields to declare; a virtual destructor is not a member.
template <class T>
struct HasNoMembers : std::bool_constant<std::is_empty_v<T> ||
                                         (std::is_polymorphic_v<T> && sizeof(T) == sizeof(void*))> {
};

// The record that a class is written as is the one that it is read through.
template <class T, class = void>
struct WritesOtherRecord : std::false_type {};
template <class T>
struct WritesOtherRecord<T, std::void_t<decltype(std::declval<const T&>().getData4Bind())>>
    : std::negation<std::is_same<std::decay_t<decltype(std::declval<const T&>().getData4Bind())>,
                                 typename T::Data4Bind>> {};

// A record that T can be read through. One with members declares them.
template <class T, class = void>
struct HasRecord : std::false_type {};
template <class T>
struct HasRecord<T, std::void_t<typename T::Data4Bind>>
    : std::conjunction<std::is_constructible<T, typename T::Data4Bind&>,
                       std::disjunction<Compiles<typename T::Data4Bind, SetBindCall>,
                                        HasNoMembers<typename T::Data4Bind>>> {};

template <class T>
struct IsObjectPointer : std::false_type {};
template <class T>
struct IsObjectPointer<boost::shared_ptr<T>> : std::is_base_of<Object, T> {};

// Types of pointers to objects that binding does not support.
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

// Excludes a parameter of this type from the deduction of T.
template <class T>
struct IdentityOf {
  using type = T;
};
template <class T>
using Identity = typename IdentityOf<T>::type;

}  // namespace detail

/// True when `T` has the member function setBind(Binder*, bool), its own or inherited.
template <class T>
constexpr bool hasSetBind = detail::Compiles<T, detail::SetBindCall>::value;

/// True when `T` has a setBind that binders cannot call: private, with other parameters, or not a
/// function. It also hides the setBind of a base.
template <class T>
constexpr bool hasUselessSetBind =
    !hasSetBind<T> && (detail::Mentions<T, detail::OtherSetBind>::value ||
                       detail::Compiles<T, detail::SetBindAddress>::value);

/// True when `T` has a member function with the parameters of setBind that is named setbind,
/// SetBind or Setbind.
template <class T>
constexpr bool hasMisspeltSetBind =
    !detail::DeclaresSetBind<T>::value && (detail::Compiles<T, detail::LowerCaseCall>::value ||
                                           detail::Compiles<T, detail::UpperCaseCall>::value ||
                                           detail::Compiles<T, detail::TitleCaseCall>::value);

/// True when `T` has no setBind, but a record `T::Data4Bind` to be read and constructed from.
template <class T>
constexpr bool bindsThroughRecord = !hasSetBind<T> && detail::HasRecord<T>::value;

/// True when `T` has no setBind, but a record `Data4Bind`, its own or inherited, that is private,
/// that does not declare its fields, or that `T` cannot be constructed from.
template <class T>
constexpr bool hasUselessRecord =
    !hasSetBind<T> && !bindsThroughRecord<T> && detail::Mentions<T, detail::OtherRecord>::value;

/// Fails to compile for a class whose fields would silently be neither read nor written.
template <class T>
constexpr void requireReachableFields() {
  static_assert(!hasUselessSetBind<T>,
                "the class needs one public void setBind(cppbind::Binder*, bool); of several bases "
                "with fields, it calls the setBind of each");
  static_assert(!hasMisspeltSetBind<T>,
                "the class has a function setbind, SetBind or Setbind: the name must be setBind");
  static_assert(
      !hasUselessRecord<T>,
      "a class with a record Data4Bind needs a public constructor from it (a derived one: "
      "using Base::Base;), and the record a public setBind; a class without fields "
      "declares its own empty setBind");
  if constexpr (bindsThroughRecord<T>) {
    static_assert(
        !detail::WritesOtherRecord<T>::value,
        "getData4Bind() must return the class's own Data4Bind, from which the class is read");
  }
}

/// True when `T` has its own toJsonValue4Bind() and fromJsonValue4Bind(json), as statistics do.
template <class T>
constexpr bool rendersItself = !hasSetBind<T> && detail::Compiles<T, detail::RenderCall>::value;

/// True when `T` is a std::vector of boost::shared_ptr to a class derived from Object.
template <class T>
constexpr bool isDynamicList = detail::IsDynamicList<T>::value;

}  // namespace cppbind
