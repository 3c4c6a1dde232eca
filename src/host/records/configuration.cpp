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
  Json::ArrayIndex index = 0;
  if (!value.isArray() && !value.isObject()) return;
  for (auto element = value.begin(); element != value.end(); ++element) {
    Place inner{&place, {}, index++};
    if (value.isObject()) {
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
  addSeeds(pipeline, {nullptr, {}}, seeds);
  return seeds;
}

}  // namespace libvarrow::host
