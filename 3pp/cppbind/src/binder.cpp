#include "cppbind/imp/binder.h"

#include <algorithm>
#include <functional>

#include "object_notes.h"

namespace cppbind {

namespace {

constexpr std::size_t kUsualFieldCount = 8;

// Null counts as an object without members.
bool hasMembers(const Json::Value& json) {
  const Json::ValueType type = json.type();
  return type == Json::objectValue || type == Json::nullValue;
}

}  // namespace

Binder::Binder(BinderImpBase* imp, Json::Value& json)
    : imp_(imp),
      decoder_(dynamic_cast<JsonDecodeBinder*>(imp)),
      encoder_(dynamic_cast<JsonEncodeBinder*>(imp)),
      source_(&json),
      target_(&json) {
  if (decoder_ != nullptr) hasMembers_ = hasMembers(json);
}

Binder::Binder(JsonDecodeBinder& decoder, const Json::Value& json)
    : imp_(&decoder),
      decoder_(&decoder),
      encoder_(nullptr),
      source_(&json),
      target_(nullptr),
      hasMembers_(hasMembers(json)) {}

Binder::Binder(JsonEncodeBinder& encoder, Json::Value& json)
    : imp_(&encoder), decoder_(nullptr), encoder_(&encoder), source_(nullptr), target_(&json) {}

Binder::Binder(JsonDecodeBinder& decoder, detail::ObjectNotes& notes)
    : Binder(decoder, Json::Value::nullSingleton()) {
  notes_ = &notes;
}

const Json::Value* Binder::claim(std::string_view key) {
  if (!hasMembers_) detail::requireObject(*source_);
  const Json::Value* member = source_->find(key.data(), key.data() + key.size());
  value_ = nullptr;
  if (member == nullptr) return nullptr;
  addClaim(member);
  if (!member->isNull()) value_ = member;
  return value_;
}

const Json::Value* Binder::claimWhole() {
  isWholeClaimed_ = true;
  value_ = source_->isNull() ? nullptr : source_;
  return value_;
}

void Binder::missing(std::string_view key, const detail::FieldType& type, void* field) {
  if (notes_ != nullptr) {
    noted_ = &notes_->addField(key, type);
    noted_->isRequired = !readsNull(type);
  } else if (readsNull(type)) {
    type.read(*decoder_, Json::Value::nullSingleton(), field);
  } else {
    const char* complaint = type.isObjectList ? "should be a object array" : "not found";
    throw ParseErrorException(std::string(key), complaint);
  }
}

void Binder::missingWhole(const detail::FieldType& type, void* whole) {
  if (notes_ != nullptr) {
    noted_ = &notes_->addWhole(type);
    noted_->isRequired = !readsNull(type);
  } else if (readsNull(type)) {
    type.read(*decoder_, Json::Value::nullSingleton(), whole);
  } else {
    detail::throwNotFound();
  }
}

bool Binder::readsNull(const detail::FieldType& type) const {
  return type.readsNull != nullptr && type.readsNull(*decoder_);
}

void Binder::noteDefault(std::string_view key, const detail::FieldType& type, const void* field) {
  noted_ = &notes_->addField(key, type);
  notes_->setDefault(*noted_, type, field);
}

bool Binder::noteList(std::string_view key, const detail::FieldType& type,
                      const Json::Value* defaultJson, const ClassRegisterBase* reg) {
  if (notes_ == nullptr) return false;
  noted_ = &notes_->addList(key, type, reg);
  noted_->isRequired = defaultJson == nullptr;
  if (defaultJson != nullptr) noted_->defaultValue = *defaultJson;
  return true;
}

void Binder::noteAbout(std::string_view text) {
  notes_->setAbout(text);
}

// A key that is bound twice counts once.
void Binder::addClaim(const Json::Value* member) {
  if (isAmongFirstClaims(member)) return;
  if (firstClaimCount_ < firstClaims_.size()) {
    firstClaims_[firstClaimCount_++] = member;
  } else {
    furtherClaims_.push_back(member);
  }
}

bool Binder::isAmongFirstClaims(const Json::Value* member) const {
  for (std::size_t i = 0; i < firstClaimCount_; ++i) {
    if (firstClaims_[i] == member) return true;
  }
  return false;
}

bool Binder::hasClaimedAll() {
  auto& claims = furtherClaims_;
  std::sort(claims.begin(), claims.end(), std::less<>());
  claims.erase(std::unique(claims.begin(), claims.end()), claims.end());
  return firstClaimCount_ + claims.size() == source_->size();
}

bool Binder::isClaimed(const Json::Value* member) const {
  return isAmongFirstClaims(member) ||
         std::binary_search(furtherClaims_.begin(), furtherClaims_.end(), member, std::less<>());
}

void Binder::checkUnknownKeys() {
  if (decoder_ == nullptr || isWholeClaimed_) return;
  if (!hasMembers_) detail::requireObject(*source_);
  if (decoder_->acceptsUnknownKeys()) return;
  if (hasClaimedAll()) return;
  for (auto member = source_->begin(); member != source_->end(); ++member) {
    if (!isClaimed(&*member)) {
      throw ParseErrorException("unknown json key:[" + member.name() + "]");
    }
  }
}

Json::Value& Binder::memberToWrite(std::string_view key) {
  if (keys_.empty()) keys_.reserve(kUsualFieldCount);
  keys_.emplace_back(key);
  return *target_->demand(key.data(), key.data() + key.size());
}

}  // namespace cppbind
