// Optional keys, for fields in which a missing key differs from every value.
#pragma once

#include <cppbind/imp/binder.h>

#include <optional>
#include <string_view>
#include <utility>

namespace cppbind {

template <class T>
struct FieldCodec<std::optional<T>> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, std::optional<T>& field) {
    T value{};
    FieldCodec<T>::read(decoder, json, value);
    field = std::move(value);
  }
  static void write(JsonEncodeBinder& encoder, const std::optional<T>& field, Json::Value& json) {
    if (field) FieldCodec<T>::write(encoder, *field, json);
  }
};

}  // namespace cppbind

namespace jobshop {

/// Binds an optional field: a missing key reads as nothing, and nothing is written as no key.
template <class T>
void bindOptional(cppbind::Binder* binder, std::string_view key, std::optional<T>& field) {
  if (binder->isReading() || field) binder->bind(key, field, std::nullopt);
}

}  // namespace jobshop
