#include "host/records/configuration.h"

#include <cppbind/imp/json_encode_binder.h>

#include <exception>
#include <string_view>

#include "host/json_path.h"
#include "libvarrow/module/ChainedModule.h"

namespace libvarrow::host {

namespace {

bool endsIn(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool isSeed(const std::string& key) {
  return key == "seed" || endsIn(key, "_seed") || endsIn(key, "Seed");
}

void addSeeds(const Json::Value& value, JsonPath& path, Json::Value& seeds) {
  if (value.isArray()) {
    for (Json::ArrayIndex i = 0; i < value.size(); ++i) {
      path.push_back(indexText(i));
      addSeeds(value[i], path, seeds);
      path.pop_back();
    }
  }
  if (!value.isObject()) return;
  for (auto member = value.begin(); member != value.end(); ++member) {
    const std::string key = member.name();
    path.push_back(key);
    if (isSeed(key)) {
      Json::Value& entry = seeds.append(Json::Value(Json::objectValue));
      entry["path"] = pathText(path);
      entry["value"] = *member;
    }
    addSeeds(*member, path, seeds);
    path.pop_back();
  }
}

}  // namespace

Json::Value configurationOf(const Module& chain) {
  try {
    cppbind::JsonEncodeBinder binder;
    if (const auto* const list = dynamic_cast<const ChainedModule*>(&chain)) {
      if (list->getJsonValue4Bind().isNull()) return binder.encode(list->getData4Bind());
    }
    Json::Value pipeline(Json::objectValue);
    pipeline["mainModule"] = binder.jsonOf(chain);
    return pipeline["mainModule"].isNull() ? Json::Value() : pipeline;
  } catch (const std::exception&) {
    return Json::Value();  // a host's class may have no form in JSON
  }
}

Json::Value seedsOf(const Json::Value& pipeline) {
  Json::Value seeds(Json::arrayValue);
  JsonPath path;
  addSeeds(pipeline, path, seeds);
  return seeds;
}

}  // namespace libvarrow::host
