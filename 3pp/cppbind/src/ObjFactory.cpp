#include "cppbind/ObjFactory.h"

#include <utility>

namespace cppbind {

ObjFactory::ObjFactory(Json::Value baseProperty) : baseProperty_(std::move(baseProperty)) {}

ObjFactory::~ObjFactory() = default;

Json::Value ObjFactory::creationRecord(const Json::Value& json) const {
  Json::Value record(Json::objectValue);
  record["baseProperty"] = baseProperty_;
  record["originParameter"] = json;
  return record;
}

Json::Value dynamicTypeForm(const std::string& name, Json::Value fields) {
  Json::Value form(Json::objectValue);
  form[name] = std::move(fields);
  return form;
}

}  // namespace cppbind
