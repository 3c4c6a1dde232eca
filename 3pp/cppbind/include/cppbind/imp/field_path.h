// The ways from a field to the values that its constraints apply to.
#pragma once

#include <json/value.h>

#include <algorithm>
#include <boost/shared_ptr.hpp>
#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "cppbind/imp/field_type.h"
#include "cppbind/imp/gatherer.h"

namespace cppbind::detail {

// Returns the value inside an optional or a shared string, if any.
template <class T>
const T* constrained(const T& value) {
  return &value;
}
inline const std::string* constrained(const boost::shared_ptr<std::string>& value) {
  return value.get();
}
template <class T>
const auto* constrained(const std::optional<T>& value) {
  using Inner = decltype(constrained(*value));
  return value ? constrained(*value) : Inner(nullptr);
}
template <class T>
using Constrained =
    std::remove_const_t<std::remove_pointer_t<decltype(constrained(std::declval<const T&>()))>>;

template <class Container>
struct ElementOf {
  using type = typename Container::value_type;
};
template <class Key, class T, class Less, class Allocator>
struct ElementOf<std::map<Key, T, Less, Allocator>> {
  using type = T;
};

template <class T>
const T& elementIn(const T& member) {
  return member;
}
template <class Key, class T>
const T& elementIn(const std::pair<const Key, T>& member) {
  return member.second;
}

template <class Container, class Test>
bool allElements(const Container& container, const Test& test) {
  using Element = typename ElementOf<Container>::type;
  for (const auto& member : container) {
    const Element& element = elementIn(member);
    const auto* value = constrained(element);
    if (value != nullptr && !test(*value)) return false;
  }
  return true;
}

template <class T, class Visit>
void visitValue(const Json::Value& json, const T& value, const Visit& visit) {
  if (const auto* inner = constrained(value)) visit(json, *inner);
}

// Returns null for an element that a host's codec did not read from an element of an array.
inline const Json::Value& jsonAt(const Json::Value& json, std::size_t index) {
  const auto position = static_cast<Json::ArrayIndex>(index);
  return json.isArray() && position < json.size() ? json[position] : Json::Value::nullSingleton();
}

// Visits the elements that were read from `json`: a list of objects may have had others before.
template <class T, class Visit>
void visitElements(JsonDecodeBinder& decoder, const Json::Value& json, const std::vector<T>& list,
                   const Visit& visit) {
  const std::size_t count = json.isArray() ? json.size() : list.size();
  // In parentheses, as <windows.h> may define a macro min.
  const std::size_t first = list.size() - (std::min)(count, list.size());
  Gatherer gatherer(decoder);
  for (std::size_t i = first; i < list.size(); ++i) {
    gatherer.atIndex(i - first, [&] {
      const T& element = list[i];
      visitValue(jsonAt(json, i - first), element, visit);
    });
  }
  gatherer.finish();
}

// Reads the elements again: a set does not know their indices.
template <class T, class Less, class Allocator, class Visit>
void visitElements(JsonDecodeBinder& decoder, const Json::Value& json,
                   const std::set<T, Less, Allocator>& set, const Visit& visit) {
  Gatherer gatherer(decoder);
  std::size_t index = 0;
  if (!json.isArray()) {  // read by a host's codec
    for (const T& element : set) {
      gatherer.atIndex(index++, [&] { visitValue(json, element, visit); });
    }
    return gatherer.finish();
  }
  for (const Json::Value& member : json) {
    gatherer.atIndex(index++, [&] {
      T element{};
      FieldCodec<T>::read(decoder, member, element);
      visitValue(member, element, visit);
    });
  }
  gatherer.finish();
}

template <class T, class Less, class Allocator, class Visit>
void visitElements(JsonDecodeBinder& decoder, const Json::Value& json,
                   const std::map<std::string, T, Less, Allocator>& map, const Visit& visit) {
  Gatherer gatherer(decoder);
  for (const auto& [key, element] : map) {
    const T& value = element;
    const Json::Value* member = json.find(key.data(), key.data() + key.size());
    gatherer.atKey(key, [&] {
      visitValue(member != nullptr ? *member : Json::Value::nullSingleton(), value, visit);
    });
  }
  gatherer.finish();
}

// A function with its context.
struct ValueVisitor {
  void (*visit)(const void* context, const void* value);
  const void* context;
};

// The value of the field itself.
struct Itself {
  static constexpr std::size_t depth = 0;
  template <class T>
  using Value = Constrained<T>;

  template <class T, class Test>
  static bool all(const T& field, const Test& test) {
    const auto* value = constrained(field);
    return value == nullptr || test(*value);
  }
  // Calls `visit` with each value and its JSON; exceptions get the path from the field.
  template <class T, class Visit>
  static void visit(JsonDecodeBinder&, const Json::Value& json, const T& field,
                    const Visit& visit) {
    visitValue(json, field, visit);
  }
};

// Each element of the values of another path.
template <class Outer>
struct EachOf {
  static constexpr std::size_t depth = Outer::depth + 1;
  template <class T>
  using Value = Constrained<typename ElementOf<typename Outer::template Value<T>>::type>;

  template <class T, class Test>
  static bool all(const T& field, const Test& test) {
    return Outer::all(field, [&](const auto& container) { return allElements(container, test); });
  }
  template <class T, class Visit>
  static void visit(JsonDecodeBinder& decoder, const Json::Value& json, const T& field,
                    const Visit& visit) {
    Outer::visit(decoder, json, field, [&](const Json::Value& array, const auto& container) {
      visitElements(decoder, array, container, visit);
    });
  }
};

}  // namespace cppbind::detail
