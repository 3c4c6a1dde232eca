#include "libvarrow/utility/text.h"

#include <map>
#include <mutex>

#include "base/NeverDestroyed.h"

namespace libvarrow {

std::string PrefixOnEachLine(const std::string& prefix, const std::string& text) {
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t lineFeed = text.find('\n', at);
    const std::size_t end = lineFeed == std::string::npos ? text.size() : lineFeed + 1;
    result += prefix;
    result.append(text, at, end - at);
    at = end;
  }
  return result;
}

std::uint64_t getSerialNum(const std::string& name) {
  static std::mutex mutex;
  static base::NeverDestroyed<std::map<std::string, std::uint64_t>> counters;
  const std::lock_guard<std::mutex> lock(mutex);
  const auto [counter, isNew] = counters->emplace(name, 0);
  return isNew ? 0 : ++counter->second;
}

}  // namespace libvarrow
