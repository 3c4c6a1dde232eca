// The names of an enumeration's values in JSON, declared once beside the enumeration.
#pragma once

#include <array>
#include <boost/current_function.hpp>
#include <cstddef>
#include <cstdint>
#include <limits>
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

// The values from `first` on as the compiler writes them.
struct ProbedValues {
  std::int64_t first;
  const char* const* texts;
  std::size_t count;
};

// Returns a text that ends with "Order::fifo]", or with "(Order)5]" for a value without enumerator;
// with Visual C++, with "Order::fifo>(void)" or a number.
template <auto Value>
constexpr const char* probedText() {
  return BOOST_CURRENT_FUNCTION;
}

template <class E, std::int64_t First, std::size_t... Offsets>
ProbedValues probedValues(std::index_sequence<Offsets...>) {
  static constexpr const char* texts[] = {
      probedText<static_cast<E>(First + static_cast<std::int64_t>(Offsets))>()...};
  return {First, texts, sizeof...(Offsets)};
}

// True when every value of the underlying type is one of E.
template <class E, class = void>
struct HasFixedType : std::false_type {};
template <class E>
struct HasFixedType<E, std::void_t<decltype(E{std::underlying_type_t<E>{}})>> : std::true_type {};

struct ProbedRange {
  std::int64_t first;
  std::size_t count;
};

// Returns the range of the named values and some around them. It is bounded, as each value costs
// time to compile.
template <class E>
constexpr ProbedRange probedRange() {
  using Type = std::underlying_type_t<E>;
  constexpr std::int64_t around = HasFixedType<E>::value ? 3 : 0;
  constexpr std::uint64_t maxCount = 64;
  // In parentheses, as <windows.h> may define macros min and max.
  constexpr auto lowest = static_cast<std::int64_t>((std::numeric_limits<Type>::min)());
  constexpr std::uint64_t typeMost = (std::numeric_limits<Type>::max)();
  constexpr std::int64_t wideMost = (std::numeric_limits<std::int64_t>::max)();
  constexpr std::int64_t highest =
      typeMost > std::uint64_t{wideMost} ? wideMost : static_cast<std::int64_t>(typeMost);
  const auto table = enumNames(E{});
  std::int64_t least = table.entries[0].value;
  std::int64_t most = least;
  for (const EnumEntry& entry : table.entries) {
    least = entry.value < least ? entry.value : least;
    most = entry.value > most ? entry.value : most;
  }
  const std::int64_t first = least < lowest + around ? lowest : least - around;
  const std::int64_t last = most > highest - around ? highest : most + around;
  const std::uint64_t more = static_cast<std::uint64_t>(last) - static_cast<std::uint64_t>(first);
  return {first, static_cast<std::size_t>(more < maxCount ? more + 1 : maxCount)};
}

template <class E>
ProbedValues probedValues() {
  constexpr ProbedRange range = probedRange<E>();
  return probedValues<E, range.first>(std::make_index_sequence<range.count>());
}

}  // namespace detail

}  // namespace cppbind
