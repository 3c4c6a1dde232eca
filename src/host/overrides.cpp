#include "host/overrides.h"

#include <cppbind/Checker.h>

#include <charconv>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/nearest_name.h"
#include "host/PipelineNode.h"

namespace libvarrow::host {

namespace {

using cppbind::Description;
using cppbind::ValueKind;

void merge(const Json::Value& patch, Json::Value& json, const JsonPath& path,
           std::vector<JsonPath>& set) {
  if (!patch.isObject()) {
    json = patch;
    set.push_back(path);
    return;
  }
  if (!json.isObject()) {
    json = Json::Value(Json::objectValue);
    set.push_back(path);
  }
  for (auto member = patch.begin(); member != patch.end(); ++member) {
    JsonPath inner = path;
    inner.push_back(member.name());
    if (member->isNull()) {
      json.removeMember(member.name());
      set.push_back(inner);
    } else {
      merge(*member, json[member.name()], inner, set);
    }
  }
}

bool isTextKind(ValueKind kind) {
  return kind == ValueKind::Text || kind == ValueKind::Date || kind == ValueKind::Time ||
         kind == ValueKind::Duration || kind == ValueKind::Enumeration;
}

// Text that is not JSON remains text, so that the check of the field reports the expected value.
Json::Value valueOf(const std::string& text, const cppbind::ValueDescription* kind) {
  const bool isQuoted = text.size() > 1 && text.front() == '"' && text.back() == '"';
  if (kind != nullptr && isTextKind(kind->kind) && !isQuoted) return Json::Value(text);
  cppbind::Checker checker(text);
  const bool isWhole = checker.isJson() && checker.faults().first.empty();
  return isWhole ? checker.json() : Json::Value(text);
}

// Finds the meanings of a path by comparison with the known keys, since keys may contain "." or
// "[".
class PathReader {
 public:
  explicit PathReader(const Description& description) : description_(description) {}

  void read(std::string_view rest, const PipelineNode& node) {
    if (rest.empty()) return found_.push_back(node);
    if (node.json->isArray()) return readElement(rest, node);
    if (!node.json->isObject() && !node.json->isNull()) return;
    bool isKnown = false;
    for (const std::string& key : node.keys()) isKnown |= readMember(rest, key, node);
    const bool isNewKey = rest.find_first_of(".[") == std::string_view::npos;
    const bool isMap = node.kind != nullptr && node.kind->kind == ValueKind::Map;
    const bool mayBeNew = isMap || (node.object != nullptr && !node.hasOnlyKnownKeys());
    if (!isKnown && isNewKey && mayBeNew) read("", memberOf(std::string(rest), node));
  }

  const std::vector<PipelineNode>& found() const { return found_; }

 private:
  // Adds a missing member to a copy, since other readings must not see it.
  PipelineNode memberOf(const std::string& key, const PipelineNode& node) {
    if (node.json->isMember(key)) return node.member(key, description_);
    made_.push_back(std::make_unique<Json::Value>(*node.json));
    PipelineNode copy = node;
    copy.json = made_.back().get();
    return copy.member(key, description_);
  }

  bool readMember(std::string_view rest, const std::string& key, const PipelineNode& node) {
    if (rest.substr(0, key.size()) != key) return false;
    std::string_view after = rest.substr(key.size());
    if (!after.empty() && after.front() == '.') {
      after.remove_prefix(1);
      if (after.empty()) return false;
    } else if (!after.empty() && after.front() != '[') {
      return false;
    }
    read(after, memberOf(key, node));
    return true;
  }

  void readElement(std::string_view rest, const PipelineNode& node) {
    Json::ArrayIndex index = 0;
    if (rest.front() != '[') return;
    const char* const end = rest.data() + rest.size();
    const auto [last, error] = std::from_chars(rest.data() + 1, end, index);
    if (error != std::errc() || last == end || *last != ']' || index >= node.json->size()) return;
    rest.remove_prefix(static_cast<std::size_t>(last - rest.data()) + 1);
    if (!rest.empty() && rest.front() == '.') {
      rest.remove_prefix(1);
      if (rest.empty()) return;
    } else if (!rest.empty() && rest.front() != '[') {
      return;
    }
    read(rest, node.element(index));
  }

  const Description& description_;
  std::vector<PipelineNode> found_;
  std::vector<std::unique_ptr<Json::Value>> made_;
};

std::vector<PipelineNode> onlyMeanings(const std::string& path, std::vector<PipelineNode> found) {
  if (found.size() > 1) {
    throw std::runtime_error("\"" + path + "\" means " + pathText(found[0].path) + " in two ways");
  }
  return found;
}

// Finds the fields of every object of a class by a path that begins with the class's name, which
// may contain dots.
class ClassFields {
 public:
  ClassFields(const std::string& path, const Description& description)
      : path_(path), description_(description) {}

  /// Returns the fields, valid as long as this object.
  std::vector<PipelineNode> find(const PipelineNode& root) {
    for (std::size_t dot = path_.find('.'); dot != std::string::npos;
         dot = path_.find('.', dot + 1)) {
      const auto* const wanted = classNamed(path_.substr(0, dot), description_);
      if (wanted != nullptr) findIn(*wanted, path_.substr(dot + 1), root);
    }
    return found_;
  }

 private:
  void findIn(const cppbind::ObjectDescription& wanted, const std::string& field,
              const PipelineNode& root) {
    forEachClassObject(root, description_, [&](const PipelineNode& object) {
      if (object.object != &wanted) return;
      readers_.push_back(std::make_unique<PathReader>(description_));
      readers_.back()->read(field, object);
      const std::vector<PipelineNode> places = onlyMeanings(path_, readers_.back()->found());
      found_.insert(found_.end(), places.begin(), places.end());
    });
  }

  const std::string& path_;
  const Description& description_;
  std::vector<std::unique_ptr<PathReader>> readers_;  // keep the nodes valid
  std::vector<PipelineNode> found_;
};

// Returns the paths of all class objects, and of their fields in the short and in the full form.
std::vector<std::string> knownPaths(const PipelineNode& root, const Description& description) {
  std::vector<std::string> paths = root.keys();
  forEachClassObject(root, description, [&](const PipelineNode& object) {
    paths.push_back(pathText(object.path));
    for (const std::string& key : object.keys()) {
      paths.push_back(object.object->name + "." + key);
      paths.push_back(pathText(object.path) + "." + key);
    }
  });
  return paths;
}

[[noreturn]] void throwUnknown(const std::string& path, const PipelineNode& root,
                               const Description& description) {
  base::NearestName nearest(path);
  const std::vector<std::string> paths = knownPaths(root, description);
  for (const std::string& known : paths) nearest.consider(known);
  throw std::runtime_error("the pipeline has no \"" + path + "\"" +
                           base::suggestion(nearest.name()));
}

// Sets the value at the end of `path`, whose parents exist.
void setAt(const JsonPath& path, Json::Value value, Json::Value& json) {
  Json::Value* place = &json;
  for (const std::string& part : path) {
    if (place->isArray()) {
      place = &(*place)[static_cast<Json::ArrayIndex>(std::stoul(part.substr(1)))];
    } else {
      place = &(*place)[part];
    }
  }
  *place = std::move(value);
}

}  // namespace

std::vector<JsonPath> mergePatch(const Json::Value& patch, Json::Value& json) {
  std::vector<JsonPath> set;
  merge(patch, json, {}, set);
  return set;
}

std::vector<JsonPath> applySetting(const std::string& setting, const Description& description,
                                   Json::Value& json) {
  const std::size_t equals = setting.find('=');
  if (equals == std::string::npos || equals == 0) {
    throw std::runtime_error("\"" + setting + "\" is not PATH=VALUE");
  }
  const std::string path = setting.substr(0, equals);
  const PipelineNode root{&json};
  PathReader reader(description);
  reader.read(path, root);
  std::vector<PipelineNode> places = onlyMeanings(path, reader.found());

  ClassFields fields(path, description);
  const std::vector<PipelineNode> inClass = fields.find(root);
  if (!places.empty() && !inClass.empty()) {
    throw std::runtime_error("\"" + path + "\" is a path and also a field of a class");
  }
  places.insert(places.end(), inClass.begin(), inClass.end());
  if (places.empty()) throwUnknown(path, root, description);

  std::vector<JsonPath> set;
  for (const PipelineNode& place : places) set.push_back(place.path);
  const std::string text = setting.substr(equals + 1);
  std::vector<Json::Value> values;
  for (const PipelineNode& place : places) values.push_back(valueOf(text, place.kind));
  for (std::size_t i = 0; i < set.size(); ++i) setAt(set[i], std::move(values[i]), json);
  return set;
}

}  // namespace libvarrow::host
