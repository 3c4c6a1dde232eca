#include "cppbind/ObjFactory.h"

#include <boost/make_shared.hpp>
#include <stdexcept>
#include <utility>

namespace cppbind {

ObjFactory::ObjFactory(Json::Value baseProperty)
    : baseProperty_(boost::make_shared<const Json::Value>(std::move(baseProperty))) {}

ObjFactory::~ObjFactory() = default;

void ObjFactory::describeFields(const std::string&, Binder&) const {
  throw std::logic_error("the factory does not describe its class");
}

void ObjFactory::throwNull() const {
  throw static_cast<Object*>(nullptr);
}

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
