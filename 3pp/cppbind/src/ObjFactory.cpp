#include "cppbind/ObjFactory.h"

#include <boost/make_shared.hpp>
#include <utility>

namespace cppbind {

ObjFactory::ObjFactory(Json::Value baseProperty)
    : baseProperty_(boost::make_shared<const Json::Value>(std::move(baseProperty))) {}

ObjFactory::~ObjFactory() = default;

Json::Value CreationRecord::json() const {
  if (!originParameter) return Json::Value();
  Json::Value record(Json::objectValue);
  record["baseProperty"] = *baseProperty;
  record["originParameter"] = *originParameter;
  return record;
}

Json::Value dynamicTypeForm(const std::string& name, Json::Value fields) {
  Json::Value form(Json::objectValue);
  form[name] = std::move(fields);
  return form;
}

}  // namespace cppbind
