#include "host/error_text.h"

#include "host/system.h"

namespace libvarrow::host {

std::string errorText(const boost::system::error_code& error) {
  const boost::system::error_condition condition = error.default_error_condition();
  const bool hasErrno = condition.category() == boost::system::generic_category();
  return hasErrno ? system::errorText(condition.value()) : error.message();
}

}  // namespace libvarrow::host
