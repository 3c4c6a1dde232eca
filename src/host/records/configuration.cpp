#include "host/records/configuration.h"

#include <cppbind/imp/json_encode_binder.h>

#include <exception>
#include <string_view>

#include "host/json_path.h"
#include "host/records/json_line.h"
#include "libvarrow/module/ChainedModule.h"

namespace libvarrow::host {

namespace {

bool endsIn(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool isSeed(std::string_view key) {
  return key == "seed" || endsIn(key, "_seed") || endsIn(key, "Seed");
}

// A value with those around it: a path is made only for a seed.
struct Place {
  const Place* around;
  std::string_view key;        // of a member
  Json::ArrayIndex index = 0;  // of an element

  JsonPath path() const {
    JsonPath path = around->around == nullptr ? JsonPath() : around->path();
    path.push_back(key.data() == nullptr ? indexText(index) : std::string(key));
    return path;
  }
};

void addSeeds(const Json::Value& value, const Place& place, Json::Value& seeds) {
  const bool isObject = value.isObject();
  if (!isObject && !value.isArray()) return;
  Json::ArrayIndex index = 0;
  const auto last = value.end();
  for (auto element = value.begin(); element != last; ++element) {
    Place inner{&place, {}, index++};
    if (isObject) {
      const char* end = nullptr;
      const char* const name = element.memberName(&end);
      inner.key = std::string_view(name, static_cast<std::size_t>(end - name));
    }
    if (isSeed(inner.key)) {
      Json::Value& entry = seeds.append(Json::Value(Json::objectValue));
      entry["path"] = pathText(inner.path());
      entry["value"] = *element;
    }
    addSeeds(*element, inner, seeds);
  }
}

// One step at a time: the JSON of all steps would take longer, and much memory.
Configuration ofSteps(const ChainedModule& chain) {
  const cppbind::JsonEncodeBinder binder;
  const Place root{nullptr, {}};
  const Place list{&root, "modules"};
  Configuration made{"{\n\"modules\":[", Json::Value(Json::arrayValue)};
  Json::ArrayIndex index = 0;
  for (const auto& module : chain.getData4Bind().modules) {
    const Json::Value step = module ? binder.jsonOf(*module) : Json::Value();
    made.json += index == 0 ? "\n" : ",\n";
    appendJson(made.json, step);
    addSeeds(step, {&list, {}, index++}, made.seeds);
  }
  made.json += "]}";
  return made;
}

Configuration ofPipeline(const Json::Value& pipeline) {
  Configuration made{pipelineText(pipeline), Json::Value(Json::arrayValue)};
  addSeeds(pipeline, {nullptr, {}}, made.seeds);
  return made;
}

}  // namespace

std::string pipelineText(const Json::Value& pipeline) {
  // A list in an object, in the layout with a main module one inside its class.
  const int depth = pipeline.isObject() && pipeline.isMember("mainModule") ? 4 : 2;
  std::string text;
  appendJson(text, pipeline, depth);
  return text;
}

Configuration configurationOf(const Module& chain, const Json::Value& source) {
  try {
    const auto* const list = dynamic_cast<const ChainedModule*>(&chain);
    if (list != nullptr && list->getJsonValue4Bind().isNull()) return ofSteps(*list);
    Json::Value pipeline(Json::objectValue);
    pipeline["mainModule"] = cppbind::JsonEncodeBinder().jsonOf(chain);
    if (!pipeline["mainModule"].isNull()) return ofPipeline(pipeline);
  } catch (const std::exception&) {
    // A host's class may have no form in JSON.
  }
  return ofPipeline(source);
}

}  // namespace libvarrow::host
