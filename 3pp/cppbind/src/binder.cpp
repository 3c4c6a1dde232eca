#include "cppbind/imp/binder.h"

#include <algorithm>
#include <functional>

#include "cppbind/Assert.h"

namespace cppbind {

Binder::Binder(BinderImpBase* imp, Json::Value& json)
    : imp_(imp),
      decoder_(dynamic_cast<JsonDecodeBinder*>(imp)),
      encoder_(dynamic_cast<JsonEncodeBinder*>(imp)),
      source_(&json),
      target_(&json) {}

Binder::Binder(JsonDecodeBinder& decoder, const Json::Value& json)
    : imp_(&decoder), decoder_(&decoder), encoder_(nullptr), source_(&json), target_(nullptr) {
  if (!json.isNull()) detail::requireObject(json);
}

Binder::Binder(JsonEncodeBinder& encoder, Json::Value& json)
    : imp_(&encoder), decoder_(nullptr), encoder_(&encoder), source_(nullptr), target_(&json) {}

const Json::Value* Binder::claim(std::string_view key) {
  const Json::Value* member = source_->find(key.data(), key.data() + key.size());
  if (member == nullptr) return nullptr;
  if (claimCount_ < firstClaims_.size()) {
    firstClaims_[claimCount_] = member;
  } else {
    furtherClaims_.push_back(member);
  }
  ++claimCount_;
  return member->isNull() ? nullptr : member;
}

bool Binder::isClaimed(const Json::Value* member) const {
  const auto firstEnd = firstClaims_.begin() + std::min(claimCount_, firstClaims_.size());
  return std::find(firstClaims_.begin(), firstEnd, member) != firstEnd ||
         std::find(furtherClaims_.begin(), furtherClaims_.end(), member) != furtherClaims_.end();
}

bool Binder::allMembersClaimed() const {
  const std::size_t memberCount = source_->size();
  if (claimCount_ < memberCount) return false;
  return std::all_of(source_->begin(), source_->end(),
                     [this](const Json::Value& member) { return isClaimed(&member); });
}

void Binder::checkUnknownKeys() const {
  if (decoder_ == nullptr || decoder_->acceptsUnknownKeys() || allMembersClaimed()) return;
  for (auto member = source_->begin(); member != source_->end(); ++member) {
    if (!isClaimed(&*member)) {
      throw ParseErrorException("unknown json key:[" + member.name() + "]");
    }
  }
}

Json::Value& Binder::memberToWrite(std::string_view key) {
  keys_.emplace_back(key);
  return *target_->demand(key.data(), key.data() + key.size());
}

void Binder::throwNotFound(std::string_view key) {
  throw ParseErrorException(std::string(key), "not found");
}

void Binder::failUnknownImplementation(const char* function) {
  assertionFailed("\"bug\" == NULL", __FILE__, __LINE__, function);
}

}  // namespace cppbind
