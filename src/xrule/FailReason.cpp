#include "libvarrow/xrule/FailReason.h"

#include "JsonText.h"

namespace libvarrow {

FailReason::~FailReason() = default;

std::string FailReason::toStr() const {
  return dumpJsonValueInfo();
}

std::string FailReason::dumpJsonValueInfo() const {
  return cppbind::json_text::styled(getJsonValueInfo(), "\t");
}

}  // namespace libvarrow
