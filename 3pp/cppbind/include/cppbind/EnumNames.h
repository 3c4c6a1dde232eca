// The names of an enumeration's values in JSON, declared once beside the enumeration.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>
#include <utility>

namespace cppbind {

/// One value of an enumeration and its name in JSON.
template <class E>
struct EnumName {
  E value;                ///< the value
  std::string_view name;  ///< its name; a literal
};

namespace detail {

struct EnumEntry {
  std::int64_t value;
  std::string_view name;
};

// View of the names of any enumeration, for code that is not a template.
struct EnumTable {
  const EnumEntry* entries;
  std::size_t count;
};

}  // namespace detail

/// The names of an enumeration; see names().
template <std::size_t Count>
struct EnumNames {
  std::array<detail::EnumEntry, Count> entries;  ///< in the order of their declaration
};

/// Returns the names of the values of `E`. A function `enumNames` in the namespace of an
/// enumeration makes it a kind of field, written as text:
///
///     enum class Order { fifo, edd };
///     constexpr auto enumNames(Order) {
///       return cppbind::names<Order>({{Order::fifo, "FIFO"}, {Order::edd, "EDD"}});
///     }
///
/// For an enumeration inside a class, the function is a friend that is defined in the class. Of
/// several names of one value the first is written, and all are read. Reading another text throws
/// "\"LIFO\" is not one of \"FIFO\", \"EDD\""; writing a value without a name throws, too.
template <class E, std::size_t Count>
constexpr EnumNames<Count> names(const EnumName<E> (&list)[Count]) {
  static_assert(std::is_enum_v<E>);
  EnumNames<Count> made{};
  for (std::size_t i = 0; i < Count; ++i) {
    made.entries[i].value = static_cast<std::int64_t>(list[i].value);
    made.entries[i].name = list[i].name;
  }
  return made;
}

namespace detail {

// Found by argument-dependent lookup.
template <class E>
using EnumNamesOf = decltype(enumNames(std::declval<E>()));

template <class E, class = void>
struct HasEnumNames : std::false_type {};
template <class E>
struct HasEnumNames<E, std::void_t<std::enable_if_t<std::is_enum_v<E>>, EnumNamesOf<E>>>
    : std::true_type {};

template <class E>
EnumTable enumTable() {
  static constexpr auto table = enumNames(E{});
  return {table.entries.data(), table.entries.size()};
}

}  // namespace detail

}  // namespace cppbind
