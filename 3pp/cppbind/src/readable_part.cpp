#include "readable_part.h"

#include <algorithm>
#include <cstdlib>

namespace cppbind::detail {

ReadablePart::ReadablePart(const Json::Value& json, const FaultGroup& faults, std::size_t depth)
    : depth_(depth) {
  const auto visit = [this](const auto& path, const CaughtFault&) { mark(path); };
  for (const CaughtFault& fault : faults.faults) visitFaults(fault, {}, visit, depth);
  if (root_.isLeftOut) exists_ = false;
  if (exists_) json_ = without(json, root_);
}

void ReadablePart::mark(const std::vector<std::string>& path) {
  Node* node = &root_;
  for (std::size_t i = 0; i < std::min(depth_, path.size()); ++i) node = &node->children[path[i]];
  node->isLeftOut = true;
}

Json::Value ReadablePart::without(const Json::Value& json, Node& node) {
  if (node.children.empty()) return json;
  Json::Value part(json.type());
  std::size_t knownCount = 0;
  // Adds an element unless it is left out.
  const auto add = [&](const std::string& name, const Json::Value& element, const auto& addPart) {
    const auto child = node.children.find(name);
    if (child == node.children.end()) return addPart(element);
    ++knownCount;
    if (!child->second.isLeftOut) addPart(without(element, child->second));
  };
  if (json.isArray()) {
    for (Json::ArrayIndex i = 0; i < json.size(); ++i) {
      add("[" + std::to_string(i) + "]", json[i], [&](const Json::Value& element) {
        part.append(element);
        node.indices.push_back(i);
      });
    }
  } else if (json.isObject()) {
    for (auto member = json.begin(); member != json.end(); ++member) {
      const std::string name = member.name();
      add(name, *member, [&](const Json::Value& element) { part[name] = element; });
    }
  }
  // The paths of a host's own codec may be others than those of the JSON.
  if (knownCount != node.children.size()) exists_ = false;
  return part;
}

void ReadablePart::addTo(FaultGroup& faults, const CaughtFault& caught) const {
  visitFaults(caught, {}, [&](const std::vector<std::string>& path, const CaughtFault& fault) {
    faults.faults.push_back(fault);
    faults.faults.back().path = path;
    restore(faults.faults.back().path);
  });
}

void ReadablePart::restore(std::vector<std::string>& path) const {
  const Node* node = &root_;
  for (std::string& element : path) {
    if (!node->indices.empty()) {
      const std::size_t index = std::strtoul(element.c_str() + 1, nullptr, 10);
      element = "[" + std::to_string(node->indices.at(index)) + "]";
    }
    const auto child = node->children.find(element);
    if (child == node->children.end()) return;
    node = &child->second;
  }
}

}  // namespace cppbind::detail
