#include "cppbind/Field.h"

#include <algorithm>
#include <boost/make_shared.hpp>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "collector.h"
#include "exact_duration.h"
#include "object_notes.h"

namespace cppbind::detail {

namespace {

// A text and the view of it. Not movable, because the text may be inside the string object.
struct KeptText : std::string_view {
  explicit KeptText(std::string_view original) : text(original) {
    static_cast<std::string_view&>(*this) = text;
  }
  KeptText(const KeptText&) = delete;
  KeptText& operator=(const KeptText&) = delete;

  const std::string text;
};

// Returns the form of a value in conditions and messages.
Json::Value jsonOf(const BinderImpBase& binder, const FieldType& type, const void* value) {
  using boost::posix_time::time_duration;
  JsonEncodeBinder encoder(binder.converters());
  const StringConverter* const converter = encoder.findConverter(typeid(time_duration));
  if (dynamic_cast<const BoostTimeDurationConverter*>(converter) != nullptr) {
    using Exact = StringConverterT<time_duration, ExactDurationText>;
    encoder.setConverter(typeid(time_duration), boost::make_shared<Exact>());
  }
  Json::Value json;
  type.write(encoder, value, json);
  return json;
}

// A rule with the addresses of its bounds, which may be those of copies.
class BoundRule {
 public:
  BoundRule(const Rule& rule, const RuledValues& values)
      : kind_(rule.kind), test_(rule.test), type_(rule.type), words_(rule.words), values_(&values) {
    for (std::size_t i = 0; i < rule.count; ++i) {
      bounds_.push_back(static_cast<const char*>(rule.bounds) + i * rule.type->size);
    }
  }

  // Copies the bounds.
  void own() {
    for (const void*& bound : bounds_) {
      bound = owned_.emplace_back(copyOf(bound)).get();
    }
  }

  Constraint constraint(const BinderImpBase& binder) const {
    Constraint made{kind_, {}, words_};
    if (kind_ == ConstraintKind::Satisfies) return made;
    for (const void* bound : bounds_) made.values.push_back(jsonOfBound(binder, bound));
    return made;
  }

  // Throws for the first value that breaks the rule.
  void check(JsonDecodeBinder& decoder, const Json::Value& json, const void* field) const {
    const auto checkValue = [&](const void* value) {
      if (allows(value)) return;
      const Json::Value written = jsonOf(decoder, values_->type(), value);
      throw ParseErrorException(constraint(decoder).violation(written));
    };
    if (values_->visit == nullptr) return checkValue(field);
    using CheckValue = decltype(checkValue);
    const ValueVisitor visitor{[](const void* context, const void* value) {
                                 (*static_cast<const CheckValue*>(context))(value);
                               },
                               &checkValue};
    values_->visit(decoder, json, field, visitor);
  }

 private:
  bool allows(const void* value) const {
    if (kind_ == ConstraintKind::NotEmpty) return test_(value, nullptr);
    return std::any_of(bounds_.begin(), bounds_.end(),
                       [&](const void* bound) { return test_(value, bound); });
  }

  std::shared_ptr<void> copyOf(const void* bound) const {
    if (type_->copy != nullptr) return {type_->copy(bound), type_->destroy};
    std::shared_ptr<void> copy(::operator new(type_->size), [](void* p) { ::operator delete(p); });
    std::memcpy(copy.get(), bound, type_->size);
    return copy;
  }

  Json::Value jsonOfBound(const BinderImpBase& binder, const void* bound) const {
    if (type_->json != nullptr) return jsonOf(binder, type_->json(), bound);
    const auto& text = *static_cast<const std::string_view*>(bound);
    return Json::Value(text.data(), text.data() + text.size());
  }

  ConstraintKind kind_;
  bool (*test_)(const void* value, const void* bound);
  const BoundType* type_;
  std::string words_;
  const RuledValues* values_;
  std::vector<const void*> bounds_;
  std::vector<std::shared_ptr<void>> owned_;
};

}  // namespace

void* copyOfText(const void* text) {
  std::string_view* kept = new KeptText(*static_cast<const std::string_view*>(text));
  return kept;
}

void destroyText(void* text) {
  delete static_cast<KeptText*>(static_cast<std::string_view*>(text));
}

void FieldHandle::handle(const Rule& rule, const RuledValues& values, const void* field) const {
  JsonDecodeBinder& decoder = *binder_->decoder_;
  BoundRule bound(rule, values);
  if (field == nullptr) {
    bound.own();
    const auto check = [bound](JsonDecodeBinder& reader, const Json::Value& json,
                               const void* read) { bound.check(reader, json, read); };
    ObjectNotes::addConstraint(*noted_, bound.constraint(decoder), {values.depth, check});
    return;
  }
  const Json::Value& source = *binder_->source_;
  try {
    if (key_.data() == nullptr) return bound.check(decoder, source, field);
    const Json::Value* member = source.find(key_.data(), key_.data() + key_.size());
    withKey(key_, [&] { bound.check(decoder, *member, field); });
  } catch (...) {
    if (Collector::of(&decoder) != nullptr) Collector::rethrowCondition();
    throw;
  }
}

void FieldHandle::noteAbout(std::size_t depth, std::string_view text) const {
  ObjectNotes::valueAt(*noted_, depth).about = text;
}

}  // namespace cppbind::detail
