#include "collector.h"

#include <algorithm>
#include <exception>
#include <map>
#include <new>
#include <set>
#include <string_view>
#include <utility>

#include "base/nearest_name.h"
#include "base/out_of_memory.h"
#include "base/system_text.h"
#include "cppbind/cppbind.h"

namespace cppbind {

void JsonDecodeBinder::collect(const Json::Value& json, const std::type_info& type,
                               void (*bind)(void* object, Binder& binder), void* object) {
  collector_->collect(json, type, bind, object);
}

namespace detail {

namespace {

CaughtFault unknownKey(const std::string& key, std::string hint) {
  auto notes = std::make_shared<FaultNotes>();
  notes->hint = std::move(hint);
  notes->keyPath = {key};
  return {{}, "unknown json key:[" + key + "]", std::move(notes)};
}

}  // namespace

CaughtFault Collector::caught() {
  try {
    throw;
  } catch (const ClassMissRegException& error) {
    // At the class name. Without a hint the class exists, but does not fit.
    if (error.notes_ != nullptr) return {error.path_, error.message_, error.notes_};
    const std::string name = error.message_.substr(0, error.message_.rfind(" miss register"));
    auto notes = std::make_shared<FaultNotes>();
    notes->keyPath = error.path_;
    notes->keyPath.push_back(name);
    notes->pathLength = error.path_.size();
    return {error.path_, error.message_, std::move(notes)};
  } catch (const ParseErrorException& error) {
    return {error.path_, libvarrow::base::utf8Text(error.message_), error.notes_};
  } catch (const std::exception& error) {
    if (libvarrow::base::isOutOfMemory(error)) throw std::bad_alloc();
    return {{}, libvarrow::base::utf8Text(error.what()), nullptr};
  } catch (...) {
    return {{}, "an exception of unknown type", nullptr};
  }
}

void Collector::addPathFront(CaughtFault& fault, std::string element) {
  fault.path.insert(fault.path.begin(), std::move(element));
}

void Collector::throwGroup(FaultGroup group) {
  ParseErrorException error(group.faults.front().message);
  error.path_ = group.faults.front().path;
  error.rebuildWhat();
  auto notes = std::make_shared<FaultNotes>();
  notes->pathLength = error.path_.size();
  notes->group = std::move(group);
  error.notes_ = std::move(notes);
  throw error;
}

void Collector::rethrowCondition() {
  try {
    throw;
  } catch (ParseErrorException& error) {
    FaultNotes notes = error.notes_ != nullptr ? *error.notes_ : FaultNotes();
    notes.isCondition = true;
    error.notes_ = std::make_shared<FaultNotes>(std::move(notes));
    throw;
  }
}

Collector::Collector(JsonDecodeBinder& decoder, Describer& describer)
    : decoder_(decoder), describer_(describer) {
  decoder_.collector_ = this;
}

Collector::~Collector() {
  decoder_.collector_ = nullptr;
}

ObjFactory& Collector::findFactory(const ClassRegisterBase& reg, const std::string& className) {
  if (ObjFactory* const factory = reg.find(className)) return *factory;
  libvarrow::base::NearestName nearest(className);
  for (const auto& entry : reg.classes()) nearest.consider(entry.second.name);
  ClassMissRegException error(className);
  auto notes = std::make_shared<FaultNotes>();
  notes->hint = nearest.name();
  notes->keyPath = {className};
  error.notes_ = std::move(notes);
  throw error;
}

Collector::ClassScope::ClassScope(Collector* collector, const ObjFactory& factory)
    : collector_(collector) {
  if (collector_ != nullptr) before_ = std::exchange(collector_->creating_, &factory);
}

Collector::ClassScope::~ClassScope() {
  if (collector_ != nullptr) collector_->creating_ = before_;
}

// The faults of one object.
class Collector::ObjectFaults {
 public:
  ObjectFaults(JsonDecodeBinder& decoder, const Json::Value& json)
      : decoder_(decoder), json_(json), binder_(decoder, json) {}

  // Reads the object. Returns false when it has a fault, or keys that its setBind did not claim.
  bool read(void (*bind)(void* object, Binder& binder), void* object) {
    bool isRead = true;
    try {
      if (bind != nullptr) bind(object, binder_);
    } catch (...) {
      faults_.push_back(Collector::caught());
      isRead = false;
    }
    return binder_.hasClaimedAll() && binder_.hasMembers_ && isRead;
  }

  // Finds the other faults and throws all, if any.
  void finish(const ObjectDescription* description) {
    description_ = description;
    if (faults_.empty()) {
      findUnknownKeys();
    } else if (canGoOn()) {
      isEnded_ = true;
      goOn();
    }
    if (!faults_.empty()) Collector::throwGroup({std::move(faults_)});
  }

 private:
  bool canGoOn() const {
    return description_ != nullptr && description_->isComplete() && binder_.hasMembers_;
  }

  // Finds the faults that setBind did not reach.
  void goOn() {
    checkConditions();
    if (!description_->whole.empty()) return;
    std::set<std::string_view> faultyKeys;
    for (const FieldDescription& field : description_->fields) {
      const Json::Value* const member = memberOf(field);
      const bool isReached = member != nullptr ? binder_.isClaimed(member) : isFirst(field);
      // A key may be bound twice. To check a value with faults again would take exponential time if
      // the objects in it have such a key, too.
      if (isReached || faultyKeys.count(field.key) > 0) continue;
      const std::size_t countBefore = faults_.size();
      check(field, member);
      if (faults_.size() > countBefore) faultyKeys.insert(field.key);
    }
    pairMisspeltKeys();
    findUnknownKeys();
  }

  // Finds all elements that break a condition, and other conditions that they break: the first
  // fault ended setBind.
  void checkConditions() {
    const CaughtFault first = faults_.front();
    if (first.notes == nullptr || !first.notes->isCondition) return checkReadable(first);
    for (const FieldDescription& whole : description_->whole) check(whole, &json_);
    if (first.path.empty()) return;
    for (const FieldDescription& field : description_->fields) {
      if (field.key == first.path.front()) check(field, memberOf(field));
    }
  }

  // Checks the conditions on elements of the field of the first fault.
  void checkReadable(const CaughtFault& first) {
    for (const FieldDescription& whole : description_->whole) checkReadable(whole, json_, first);
    if (first.path.empty()) return;
    CaughtFault inField = first;
    inField.path.erase(inField.path.begin());
    if (first.notes != nullptr && first.notes->pathLength > inField.path.size()) return;
    for (const FieldDescription& field : description_->fields) {
      const Json::Value* const member = memberOf(field);
      if (member == nullptr || field.key != first.path.front()) continue;
      const std::size_t countBefore = faults_.size();
      checkReadable(field, *member, inField);
      for (std::size_t i = countBefore; i < faults_.size(); ++i) {
        Collector::addPathFront(faults_[i], field.key);
      }
    }
  }

  // `fault` is that of reading `json`.
  void checkReadable(const FieldDescription& field, const Json::Value& json, CaughtFault fault) {
    FaultGroup found{{std::move(fault)}};
    field.checkReadable(decoder_, json, found);
    faults_.insert(faults_.end(), found.faults.begin() + 1, found.faults.end());
  }

  bool isFirst(const FieldDescription& field) const {
    const std::vector<std::string>& path = faults_.front().path;
    return path.size() == 1 && path.front() == field.key;
  }

  const Json::Value* memberOf(const FieldDescription& field) const {
    return json_.find(field.key.data(), field.key.data() + field.key.size());
  }

  void check(const FieldDescription& field, const Json::Value* member) {
    const Json::Value& value = member != nullptr ? *member : Json::Value::nullSingleton();
    if (value.isNull() && !field.isRequired) return;
    try {
      field.check(decoder_, value);
    } catch (...) {
      CaughtFault fault = Collector::caught();
      if (!field.key.empty() || description_->whole.empty()) {
        Collector::addPathFront(fault, field.key);
      }
      faults_.push_back(std::move(fault));
    }
  }

  bool isUnknown(const Json::Value& member, const std::string& key) const {
    if (binder_.isClaimed(&member)) return false;
    return !isEnded_ || description_->field(key) == nullptr;
  }

  bool isMissing(const CaughtFault& fault) const {
    if (fault.path.size() != 1) return false;
    const FieldDescription* const field = description_->field(fault.path.front());
    return field != nullptr && field->isRequired && memberOf(*field) == nullptr;
  }

  // Moves the fault of a missing required key to the unknown key that probably means it. The
  // unknown key is then not a separate fault.
  void pairMisspeltKeys() {
    for (CaughtFault& fault : faults_) {
      if (!isMissing(fault) || fault.notes != nullptr) continue;
      libvarrow::base::NearestName nearest(fault.path.front());
      for (const std::string& key : unknownKeys()) {
        if (misspelt_.count(key) == 0) nearest.consider(key);
      }
      if (nearest.name().empty()) continue;
      auto notes = std::make_shared<FaultNotes>();
      notes->hint = fault.path.front();
      notes->keyPath = {std::string(nearest.name())};
      notes->pathLength = fault.path.size();
      misspelt_.insert(notes->keyPath.front());
      fault.notes = std::move(notes);
    }
  }

  const std::vector<std::string>& unknownKeys() {
    if (areUnknownKeysListed_) return unknownKeys_;
    areUnknownKeysListed_ = true;
    for (auto member = json_.begin(); member != json_.end(); ++member) {
      const std::string key = member.name();
      if (isUnknown(*member, key)) unknownKeys_.push_back(key);
    }
    return unknownKeys_;
  }

  void findUnknownKeys() {
    if (binder_.isWholeClaimed_) return;
    if (!binder_.hasMembers_) {
      faults_.push_back({{}, "should be a object", nullptr});
      return;
    }
    if (decoder_.acceptsUnknownKeys()) return;
    for (const std::string& key : unknownKeys()) {
      if (misspelt_.count(key) > 0) continue;
      libvarrow::base::NearestName nearest(key);
      if (description_ != nullptr) {
        for (const FieldDescription& field : description_->fields) {
          if (memberOf(field) == nullptr) nearest.consider(field.key);
        }
      }
      faults_.push_back(unknownKey(key, std::string(nearest.name())));
    }
  }

  JsonDecodeBinder& decoder_;
  const Json::Value& json_;
  const ObjectDescription* description_ = nullptr;  // null: unknown
  Binder binder_;
  bool isEnded_ = false;  // setBind threw, so the description tells which keys are known
  std::vector<CaughtFault> faults_;
  std::vector<std::string> unknownKeys_;
  bool areUnknownKeysListed_ = false;
  std::set<std::string> misspelt_;
};

void Collector::collect(const Json::Value& json, const std::type_info& type,
                        void (*bind)(void* object, Binder& binder), void* object) {
  const ObjFactory* const factory = std::exchange(creating_, nullptr);
  ObjectFaults faults(decoder_, json);
  if (faults.read(bind, object)) return;
  const ClassRegisterBase* const reg = decoder_.classRegister();
  faults.finish(factory != nullptr ? describer_.findClass(*factory, reg)
                                   : describer_.findRecord(type, reg));
}

void Gatherer::Deleter::operator()(FaultGroup* group) const {
  delete group;
}

void Gatherer::keep() {
  if (Collector::of(&decoder_) == nullptr) throw;
  if (group_ == nullptr) group_.reset(new FaultGroup);
  group_->faults.push_back(Collector::caught());
}

void Gatherer::caughtAt(std::size_t index) {
  caughtAt("[" + std::to_string(index) + "]");
}

void Gatherer::caughtAt(const std::string& key) {
  if (Collector::of(&decoder_) == nullptr) rethrowWithPath(key);
  keep();
  Collector::addPathFront(group_->faults.back(), key);
}

void Gatherer::caught() {
  keep();
}

void Gatherer::throwGroup() {
  Collector::throwGroup(std::move(*group_));
}

}  // namespace detail

}  // namespace cppbind
