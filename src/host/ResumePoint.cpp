#include "host/ResumePoint.h"

#include <boost/filesystem/operations.hpp>
#include <stdexcept>

#include "base/system_text.h"
#include "host/RunRecord.h"
#include "host/json_string.h"
#include "host/step_names.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// Returns the folder "dump" around `path`, or an empty path.
fs::path dumpsAround(const fs::path& path) {
  for (fs::path folder = path.parent_path(); !folder.empty(); folder = folder.parent_path()) {
    if (folder.filename() == "dump" && RunRecord::isIn(folder.parent_path())) return folder;
  }
  return fs::path();
}

bool isInside(const fs::path& path, const fs::path& folder) {
  if (!fs::exists(folder)) return false;  // a new folder; an empty path is one with a new name
  const fs::path whole = fs::canonical(folder);
  const fs::path relative = fs::canonical(path).lexically_relative(whole);
  return !relative.empty() && *relative.begin() != "..";
}

}  // namespace

ResumePoint::ResumePoint(const fs::path& folder) {
  if (folder.empty()) return;
  folder_ = fs::absolute(folder).lexically_normal();
  if (folder_.filename() == ".") folder_ = folder_.parent_path();  // after a slash
  const fs::path dumps = dumpsAround(folder_);
  if (dumps.empty()) {
    boost::system::error_code ignored;
    throw std::runtime_error(folder.generic_string() +
                             (fs::exists(folder_, ignored)
                                  ? " is not the dump of a step of a run, such as RUN/dump/2_Plan"
                                  : " does not exist"));
  }
  const fs::path step = folder_.lexically_relative(dumps);
  step_ = stepOfPath(step.generic_string());
  // Without links: the new run changes "runs/latest".
  folder_ = fs::canonical(dumps.parent_path()) / dumps.filename() / step;
}

void ResumePoint::requireStepOf(const Module& chain, const std::string& until) const {
  requireStep(chain, step_);
  if (step_.empty() || until.empty() || !isBefore(chain, until, step_)) return;
  throw std::runtime_error(
      programText("the step " + until + " is before " + step_ + ", with which the run begins"));
}

void ResumePoint::requireDump(const fs::path& runFolder) const {
  if (step_.empty()) return;
  boost::system::error_code ignored;
  if (!fs::is_directory(dump(), ignored)) {
    throw std::runtime_error(folder_.generic_string() +
                             " has no before_process: the run had fewer dumps, or its data none");
  }
  if (isInside(folder_, runFolder)) {
    throw std::runtime_error(folder_.generic_string() + " is in the folder of the new run");
  }
}

void ResumePoint::restore(ModuleData& data) const {
  if (step_.empty()) return;
  try {
    data.restore4Debug(dump().generic_string() + "/");
  } catch (const std::exception& error) {
    throw std::runtime_error("cannot restore " + dump().generic_string() + ": " +
                             base::systemText(error.what()));
  }
}

}  // namespace libvarrow::host
