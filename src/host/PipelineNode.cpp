#include "host/PipelineNode.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <locale>

namespace libvarrow::host {

namespace {

using cppbind::Description;
using cppbind::ObjectDescription;
using cppbind::ValueDescription;
using cppbind::ValueKind;

const ObjectDescription* recordOf(const ValueDescription* kind, const Description& description) {
  const bool isRecord = kind != nullptr && kind->kind == ValueKind::Record && !kind->names.empty();
  return isRecord ? &description.recordWithId(kind->names.front()) : nullptr;
}

const ValueDescription* elementOf(const ValueDescription* kind) {
  return kind != nullptr && !kind->elements.empty() ? &kind->elements.front() : nullptr;
}

}  // namespace

std::vector<std::string> PipelineNode::keys() const {
  std::vector<std::string> keys;
  if (json->isObject()) keys = json->getMemberNames();
  if (object == nullptr) return keys;
  for (const cppbind::FieldDescription& field : object->fields) {
    if (std::find(keys.begin(), keys.end(), field.key) == keys.end()) keys.push_back(field.key);
  }
  return keys;
}

PipelineNode PipelineNode::member(const std::string& key, const Description& description) const {
  // Recognises the fields of a class object, {"Plan": fields}, also where no description expects
  // one.
  const ObjectDescription* const classOfFields =
      object == nullptr && json->size() == 1 ? classNamed(key, description) : nullptr;
  PipelineNode node{&(*json)[key], path, elementOf(kind), classOfFields};
  node.path.push_back(key);
  if (object == nullptr) return node;
  const cppbind::FieldDescription* const field = object->field(key);
  node.kind = field == nullptr ? nullptr : &field->value;
  node.object = recordOf(node.kind, description);
  return node;
}

PipelineNode PipelineNode::element(Json::ArrayIndex index) const {
  PipelineNode node{&(*json)[index], path, elementOf(kind), nullptr};
  node.path.push_back(indexText(index));
  return node;
}

const ObjectDescription* classNamed(const std::string& name, const Description& description) {
  for (const ObjectDescription& known : description.classes) {
    if (boost::iequals(known.name, name, std::locale::classic())) return &known;
  }
  return nullptr;
}

void forEachClassObject(const PipelineNode& node, const Description& description,
                        const std::function<void(const PipelineNode&)>& visit) {
  if (node.json->isArray()) {
    for (Json::ArrayIndex i = 0; i < node.json->size(); ++i) {
      forEachClassObject(node.element(i), description, visit);
    }
  }
  if (!node.json->isObject()) return;
  for (const std::string& key : node.json->getMemberNames()) {
    const PipelineNode child = node.member(key, description);
    const bool isClass = node.object == nullptr && child.object != nullptr;
    if (isClass && (child.json->isObject() || child.json->isNull())) visit(child);
    forEachClassObject(child, description, visit);
  }
}

}  // namespace libvarrow::host
