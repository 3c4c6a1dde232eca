#include "cppbind/ClassRegisterBase.h"

#include <cctype>
#include <iostream>
#include <iterator>
#include <utility>

#include "collector.h"
#include "cppbind/Assert.h"
#include "cppbind/ObjFactory.h"

namespace cppbind {

namespace {

std::string lowered(std::string name) {
  for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return name;
}

// Returns the name of the class that `factory` creates, with its plug-in.
std::string classOf(const ObjFactory& factory) {
  const CodeOwner& owner = factory.codeOwner();
  return factory.typeName() + (owner == nullptr ? "" : " of " + owner->name);
}

void printNameConflict(const std::string& key, const ObjFactory& first, const ObjFactory& second) {
  std::cerr << "class name " + key + " of " + classOf(second) + " is taken by " + classOf(first) +
                   "\n"
            << std::flush;
}

}  // namespace

void ClassRegisterBase::regClass(std::string className, boost::shared_ptr<ObjFactory> factory) {
  const std::string key = lowered(className);
  const auto taken = classes_.find(key);
  if (taken != classes_.end()) {
    const ObjFactory& first = *taken->second.factory;
    std::cout << "Error " << key << " alread registered " << first.typeName() << " when register "
              << factory->typeName() << std::flush;
    printNameConflict(key, first, *factory);
    CPPBIND_ASSERT(false);
  }
  static_cast<void>(*factory);  // the pointer's own assertion refuses null
  classes_.emplace(key, RegisteredClass{std::move(className), std::move(factory)});
}

bool ClassRegisterBase::unregClass(const std::string& className) {
  return classes_.erase(lowered(className)) > 0;
}

void ClassRegisterBase::unregClassesOf(const CodeOwner& owner) {
  for (auto entry = classes_.begin(); entry != classes_.end();) {
    const bool isOwned = entry->second.factory->codeOwner() == owner;
    entry = isOwned ? classes_.erase(entry) : std::next(entry);
  }
}

ObjFactory* ClassRegisterBase::find(const std::string& className) const {
  const auto found = classes_.find(lowered(className));
  return found == classes_.end() ? nullptr : found->second.factory.get();
}

ObjFactory& ClassRegisterBase::findFactory(const std::string& className) const {
  ObjFactory* const factory = find(className);
  if (factory == nullptr) {
    std::cout << "ERROR can not find class '" << className << "'\n" << std::flush;
    throw ClassMissRegException(className);
  }
  return *factory;
}

std::unique_ptr<Object> ClassRegisterBase::createObject(const std::string& className,
                                                        const Json::Value& json,
                                                        BinderImpBase* binder) const {
  auto* const collector = detail::Collector::of(binder);
  ObjFactory& factory = collector == nullptr ? findFactory(className)
                                             : detail::Collector::findFactory(*this, className);
  const detail::Collector::ClassScope scope(collector, factory);
  try {
    return std::unique_ptr<Object>(factory.create(className, json, binder));
  } catch (ParseErrorException& error) {
    error.addPathFront(className);
    throw;
  }
}

}  // namespace cppbind
