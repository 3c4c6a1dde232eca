#include "cppbind/Field.h"

#include <string>
#include <utility>

#include "object_notes.h"

namespace cppbind::detail {

Json::Value jsonOf(const BinderImpBase& binder, const FieldType& type, const void* value) {
  JsonEncodeBinder encoder(binder.converters());
  Json::Value json;
  type.write(encoder, value, json);
  return json;
}

JsonDecodeBinder& FieldHandle::decoder() const {
  return *binder_->decoder_;
}

const BinderImpBase& FieldHandle::binderOf(const JsonDecodeBinder& decoder) {
  return decoder;
}

const Json::Value& FieldHandle::json() const {
  const Json::Value& source = *binder_->source_;
  if (isWhole()) return source;
  const Json::Value* member = source.find(key_.data(), key_.data() + key_.size());
  return member != nullptr ? *member : Json::Value::nullSingleton();
}

void FieldHandle::rethrowAtField() const {
  if (isWhole()) throw;
  rethrowWithPath(std::string(key_));
}

void FieldHandle::throwBroken(const Constraint& constraint, const Json::Value& value) {
  throw ParseErrorException(constraint.violation(value));
}

void FieldHandle::noteAbout(std::size_t depth, std::string_view text) const {
  ObjectNotes::valueAt(*noted_, depth).about = text;
}

void FieldHandle::noteConstraint(
    std::size_t depth, Constraint constraint,
    std::function<void(JsonDecodeBinder&, const Json::Value&, const void*)> check) const {
  ObjectNotes::addConstraint(*noted_, depth, std::move(constraint), std::move(check));
}

}  // namespace cppbind::detail
