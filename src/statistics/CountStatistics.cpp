#include "libvarrow/statistics/CountStatistics.h"

namespace libvarrow {

Json::Value CountStatistics::toJsonValue4Bind() const {
  return Json::Value(static_cast<Json::Int64>(count()));
}

}  // namespace libvarrow
