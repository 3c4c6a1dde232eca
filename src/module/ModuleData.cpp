#include "libvarrow/module/ModuleData.h"

#include "base/json_text.h"

namespace libvarrow {

ModuleData::~ModuleData() = default;

Json::Value ModuleData::getBaiscInfoJson() {
  return Json::Value();
}

void ModuleData::dumpDetailInfo(std::string) const {}

void ModuleData::dump4Debug(std::string) const {}

std::string ModuleData::getBaiscInfo(Json::Value* out) {
  const Json::Value info = getBaiscInfoJson();
  if (out != nullptr) *out = info;
  return base::json_text::styled(info, "\t");
}

}  // namespace libvarrow
