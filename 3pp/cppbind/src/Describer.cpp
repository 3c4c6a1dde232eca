#include "cppbind/Describer.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <list>
#include <map>
#include <new>
#include <set>
#include <stdexcept>
#include <string>
#include <typeindex>
#include <utility>
#include <vector>

#include "base/out_of_memory.h"
#include "base/system_text.h"
#include "cppbind/cppbind.h"
#include "object_notes.h"

namespace cppbind {

namespace {

// The same class may have other choices for its fields with another register.
template <class Type>
using InRegister = std::pair<Type, const ClassRegisterBase*>;

// Runs `body` and returns the reason why it did not finish; empty: it did.
template <class Body>
std::string failureOf(const Body& body) {
  try {
    body();
    return std::string();
  } catch (const std::exception& error) {
    if (libvarrow::base::isOutOfMemory(error)) throw std::bad_alloc();
    const std::string text = libvarrow::base::utf8Text(error.what());
    return text.empty() ? "an exception without a text" : text;
  } catch (...) {
    return "an exception of unknown type";
  }
}

std::vector<ObjectDescription> sortedById(std::list<ObjectDescription>& objects) {
  objects.sort([](const ObjectDescription& a, const ObjectDescription& b) { return a.id < b.id; });
  return {std::make_move_iterator(objects.begin()), std::make_move_iterator(objects.end())};
}

const ObjectDescription* withId(const std::list<ObjectDescription>& objects,
                                const std::string& id) {
  const auto found = std::find_if(objects.begin(), objects.end(),
                                  [&](const ObjectDescription& object) { return object.id == id; });
  return found == objects.end() ? nullptr : &*found;
}

}  // namespace

struct Describer::Known {
  Known(const ClassRegisterBase* reg, boost::shared_ptr<const ConverterTable> converters)
      : root(const_cast<ClassRegisterBase*>(reg)), decoder(root) {
    if (!converters) return;
    for (const auto& [type, converter] : *converters) decoder.setConverter(type, converter);
  }

  // Returns `name`, with a number when it is taken.
  static std::string newId(const std::string& name, std::set<std::string>& taken) {
    std::string id = name;
    for (int i = 2; !taken.insert(id).second; ++i) id = name + " (" + std::to_string(i) + ")";
    return id;
  }

  ClassRegisterBase* root;
  JsonDecodeBinder decoder;
  CodeOwner codeOwner = currentCodeOwner();          // of the class that is being described
  const ClassRegisterBase* fieldRegister = nullptr;  // of the list that is being described

  std::map<InRegister<std::type_index>, std::string> recordIds;
  std::map<InRegister<const ObjFactory*>, std::string> classIds;
  std::set<std::string> takenRecordIds;
  std::set<std::string> takenClassIds;
  std::list<ObjectDescription> records;
  std::list<ObjectDescription> classes;
  // Classes stay alive as long as their addresses are keys.
  std::vector<boost::shared_ptr<ObjFactory>> factories;
};

Describer::Describer(const ClassRegisterBase* reg,
                     boost::shared_ptr<const ConverterTable> converters)
    : known_(std::make_unique<Known>(reg, std::move(converters))) {}

Describer::~Describer() = default;

Describer::RegisterScope::RegisterScope(Describer& describer, const ClassRegisterBase* reg)
    : describer_(describer), before_(describer.known_->fieldRegister) {
  describer_.known_->fieldRegister = reg;
}

Describer::RegisterScope::~RegisterScope() {
  describer_.known_->fieldRegister = before_;
}

bool Describer::describeText(ValueDescription& value, const std::type_info& type) {
  const StringConverter* converter = known_->decoder.findConverter(type);
  if (converter == nullptr) return false;
  const std::type_info& form = typeid(*converter);
  value.kind = form == typeid(BoostGDateConverter)          ? ValueKind::Date
               : form == typeid(BoostPTimeConverter)        ? ValueKind::Time
               : form == typeid(BoostTimeDurationConverter) ? ValueKind::Duration
                                                            : ValueKind::Text;
  return true;
}

ValueDescription& Describer::addElements(ValueDescription& value, ValueKind kind) {
  value.kind = kind;
  return value.elements.emplace_back();
}

void Describer::describeField(FieldDescription& field, const detail::FieldType& type) {
  field.type_ = &type;
  const ClassRegisterBase* reg =
      known_->fieldRegister != nullptr ? known_->fieldRegister : known_->decoder.classRegister();
  if (reg != known_->root) field.reg_ = reg;
  if (type.describe != nullptr) type.describe(field.value, *this);
}

void Describer::setDefault(FieldDescription& field, const detail::FieldType& type,
                           const void* value) const {
  JsonEncodeBinder encoder(known_->decoder.converters());
  encoder.writesObjects_ = false;
  Json::Value json;
  bool isObject = false;
  field.isRequired = false;
  field.defaultFault = failureOf([&] {
    try {
      type.write(encoder, value, json);
    } catch (const detail::ObjectAsDefault&) {
      isObject = true;
    }
  });
  if (!isObject && field.defaultFault.empty()) field.defaultValue = std::move(json);
}

template <class BindFields>
void Describer::describeFields(ObjectDescription& object, const BindFields& bindFields) {
  object.codeOwner_ = known_->codeOwner;
  const RegisterScope scope(*this, nullptr);
  detail::ObjectNotes notes(*this, object);
  Binder binder(known_->decoder, notes);
  object.incompleteBecause = failureOf([&] { bindFields(binder); });
  notes.finish();
}

void Describer::describeRecord(ValueDescription& value, const detail::RecordType& type) {
  value.kind = ValueKind::Record;
  const auto [known, isNew] =
      known_->recordIds.try_emplace({type.type(), known_->decoder.classRegister()});
  if (isNew) {
    ObjectDescription& record = known_->records.emplace_back();
    record.name = record.typeName = typeName(type.type());
    record.id = known->second = Known::newId(record.name, known_->takenRecordIds);
    describeFields(record, [&](Binder& binder) {
      if (type.functions().create == nullptr) throw std::logic_error("no default constructor");
      const std::unique_ptr<void, void (*)(void*)> object(type.functions().create(),
                                                          type.functions().destroy);
      type.bind(object.get(), binder);
    });
  }
  value.names = {known->second};
}

const std::string& Describer::classId(const std::string& name,
                                      const boost::shared_ptr<ObjFactory>& factory) {
  const auto [known, isNew] =
      known_->classIds.try_emplace({factory.get(), known_->decoder.classRegister()});
  if (isNew) {
    known_->factories.push_back(factory);
    ObjectDescription& made = known_->classes.emplace_back();
    made.name = name;
    made.typeName = factory->typeName();
    made.id = known->second = Known::newId(name, known_->takenClassIds);
    const CodeOwner before = std::exchange(known_->codeOwner, factory->codeOwner());
    describeFields(made, [&](Binder& binder) { factory->describeFields(name, binder); });
    known_->codeOwner = before;
  }
  return known->second;
}

void Describer::describeObject(ValueDescription& value, bool (*fits)(const ObjFactory&)) {
  value.kind = ValueKind::Object;
  const ClassRegisterBase* reg =
      known_->fieldRegister != nullptr ? known_->fieldRegister : known_->decoder.classRegister();
  if (reg == nullptr) return;
  for (const auto& entry : reg->classes()) {
    const RegisteredClass& candidate = entry.second;
    if (fits(*candidate.factory)) {
      value.names.push_back(classId(candidate.name, candidate.factory));
    }
  }
}

const ObjectDescription* Describer::findClass(const ObjFactory& factory,
                                              const ClassRegisterBase* reg) const {
  const auto known = known_->classIds.find({&factory, reg});
  return known == known_->classIds.end() ? nullptr : withId(known_->classes, known->second);
}

const ObjectDescription* Describer::findRecord(const std::type_info& type,
                                               const ClassRegisterBase* reg) const {
  const auto known = known_->recordIds.find({type, reg});
  return known == known_->recordIds.end() ? nullptr : withId(known_->records, known->second);
}

const std::list<ObjectDescription>& Describer::classes() const {
  return known_->classes;
}

const std::list<ObjectDescription>& Describer::records() const {
  return known_->records;
}

Description Describer::result(ValueDescription root) {
  Description made;
  made.root = std::move(root);
  made.classes = sortedById(known_->classes);
  made.records = sortedById(known_->records);
  return made;
}

namespace detail {

struct DescriberAccess {
  using RegisterScope = Describer::RegisterScope;

  static Description result(Describer& describer, ValueDescription root) {
    return describer.result(std::move(root));
  }
};

}  // namespace detail

Description describe(const ClassRegisterBase& reg,
                     boost::shared_ptr<const ConverterTable> converters) {
  Describer describer(&reg, std::move(converters));
  ValueDescription root;
  describer.describeObject(root, [](const ObjFactory&) { return true; });
  return detail::DescriberAccess::result(describer, std::move(root));
}

namespace detail {

Description describeType(const FieldType& type, const ClassRegisterBase* reg,
                         boost::shared_ptr<const ConverterTable> converters) {
  Describer describer(reg, std::move(converters));
  ValueDescription root;
  if (type.describe != nullptr) type.describe(root, describer);
  return DescriberAccess::result(describer, std::move(root));
}

Description describeObjects(const ClassRegisterBase& reg, bool (*fits)(const ObjFactory&)) {
  Describer describer(nullptr, nullptr);
  ValueDescription root;
  {
    const DescriberAccess::RegisterScope scope(describer, &reg);
    describer.describeObject(root, fits);
  }
  return DescriberAccess::result(describer, std::move(root));
}

void throwNullObject(const ObjFactory& factory) {
  factory.throwNull();
}

}  // namespace detail

}  // namespace cppbind
