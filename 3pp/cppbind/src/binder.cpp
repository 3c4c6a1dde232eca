#include "cppbind/imp/binder.h"

#include <algorithm>

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

const Json::Value* Binder::claim(std::string_view key) {
  if (!hasMembers_) detail::requireObject(*source_);
  const Json::Value* member = source_->find(key.data(), key.data() + key.size());
  if (member == nullptr) return nullptr;
  // A key that is bound twice counts once, so that claimCount_ is the number of known members.
  if (!isClaimed(member)) addClaim(member);
  return member->isNull() ? nullptr : member;
}

const Json::Value& Binder::claimWhole() {
  isWholeClaimed_ = true;
  if (source_->isNull()) detail::throwNotFound();
  return *source_;
}

void Binder::addClaim(const Json::Value* member) {
  if (claimCount_ < firstClaims_.size()) {
    firstClaims_[claimCount_] = member;
  } else {
    furtherClaims_.push_back(member);
  }
  ++claimCount_;
}

bool Binder::isClaimed(const Json::Value* member) const {
  const std::size_t firstCount = std::min(claimCount_, firstClaims_.size());
  for (std::size_t i = 0; i < firstCount; ++i) {
    if (firstClaims_[i] == member) return true;
  }
  return std::find(furtherClaims_.begin(), furtherClaims_.end(), member) != furtherClaims_.end();
}

void Binder::checkUnknownKeys() const {
  if (decoder_ == nullptr || isWholeClaimed_) return;
  if (!hasMembers_) detail::requireObject(*source_);
  if (decoder_->acceptsUnknownKeys()) return;
  if (claimCount_ == source_->size()) return;
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

void Binder::throwNotFound(std::string_view key) {
  throw ParseErrorException(std::string(key), "not found");
}

}  // namespace cppbind
