#include "libvarrow/module/ModuleData.h"

#include <stdexcept>

#include "base/json_text.h"

namespace libvarrow {

ModuleData::~ModuleData() = default;

Json::Value ModuleData::getBaiscInfoJson() {
  return Json::Value();
}

void ModuleData::dumpDetailInfo(std::string) const {}

void ModuleData::dump4Debug(std::string) const {}

void ModuleData::restore4Debug(const std::string&) {
  throw std::runtime_error("this kind of data has no restore4Debug");
}

std::string ModuleData::getBaiscInfo(Json::Value* out) {
  const Json::Value info = getBaiscInfoJson();
  if (out != nullptr) *out = info;
  return base::json_text::styled(info, "\t");
}

}  // namespace libvarrow
