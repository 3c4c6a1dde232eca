#include "host/fault_text.h"

#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <utility>

#include "base/nearest_name.h"
#include "host/one_line.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow::host {

namespace {

std::string placeOf(const std::string& origin, const cppbind::Fault& fault) {
  if (fault.line == 0) return origin;
  return origin + ":" + std::to_string(fault.line) + ":" + std::to_string(fault.column);
}

bool isSameFile(const std::string& left, const std::string& right) {
  boost::system::error_code notFound;
  return left == right || boost::filesystem::equivalent(left, right, notFound);
}

bool areEqual(const cppbind::Faults& left, const cppbind::Faults& right) {
  const auto isEqual = [](const cppbind::Fault& a, const cppbind::Fault& b) {
    return a.text() == b.text();
  };
  return left.errorCount == right.errorCount && left.warningCount == right.warningCount &&
         std::equal(left.first.begin(), left.first.end(), right.first.begin(), right.first.end(),
                    isEqual);
}

}  // namespace

void addFaults(std::vector<FileFaults>& list, FileFaults added) {
  if (added.faults.first.empty()) return;
  const bool isListed = std::any_of(list.begin(), list.end(), [&](const FileFaults& listed) {
    return areEqual(listed.faults, added.faults) && isSameFile(listed.origin, added.origin);
  });
  if (!isListed) list.push_back(std::move(added));
}

std::vector<std::string> faultLines(const FileFaults& faults) {
  std::vector<std::string> lines;
  for (const cppbind::Fault& fault : faults.faults.first) {
    const std::string text = utility::fromUtf8(fault.text());
    lines.push_back(oneLine(faults.origin + (fault.line > 0 ? ":" : ": ") + text));
  }
  if (const std::size_t count = faults.faults.unlistedCount(); count > 0) {
    lines.push_back(oneLine(faults.origin + ": and " + std::to_string(count) + " more"));
  }
  return lines;
}

std::size_t errorCount(const std::vector<FileFaults>& faults) {
  std::size_t count = 0;
  for (const FileFaults& file : faults) count += file.faults.errorCount;
  return count;
}

std::string firstError(const std::vector<FileFaults>& faults) {
  const std::size_t more = errorCount(faults) - 1;
  for (const FileFaults& file : faults) {
    for (const cppbind::Fault& fault : file.faults.first) {
      if (fault.severity != cppbind::Severity::Error) continue;
      const std::string reason = fault.what() + base::suggestion(fault.hint);
      std::string text = placeOf(file.origin, fault) + ": " + utility::fromUtf8(reason);
      if (more > 0) text += "; and " + std::to_string(more) + " more error" + (more > 1 ? "s" : "");
      return oneLine(text);
    }
  }
  return std::string();
}

}  // namespace libvarrow::host
