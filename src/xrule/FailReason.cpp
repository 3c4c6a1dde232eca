#include "libvarrow/xrule/FailReason.h"

#include "base/json_text.h"

namespace libvarrow {

FailReason::~FailReason() = default;

std::string FailReason::toStr() const {
  return dumpJsonValueInfo();
}

std::string FailReason::dumpJsonValueInfo() const {
  return base::json_text::styled(getJsonValueInfo(), "\t");
}

}  // namespace libvarrow
