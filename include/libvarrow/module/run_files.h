// The files and verdicts of the run that a module works in.
#pragma once

#include <boost/filesystem/path.hpp>
#include <stdexcept>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

class ModuleData;

/// Ends a run whose plan breaks rules. Thrown by modules; its text is for users.
class LIBVARROW_API RulesBroken : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Returns the path of an output file: `path` in the folder of the run, or `path` itself if it is
/// absolute or `data` has no run. Modules that write their files there can run at the same time in
/// one process:
///
///     std::ofstream file(libvarrow::outputPath(*data, "schedule.json").string());
LIBVARROW_API boost::filesystem::path outputPath(const ModuleData& data,
                                                 const boost::filesystem::path& path);
/// Returns the path of an input file: `path` in the folder of inputs, or `path` itself if it is
/// absolute or `data` has no run. Records the file as an input of the run. A field of the type
/// InputFile does the same.
LIBVARROW_API boost::filesystem::path inputPath(const ModuleData& data,
                                                const boost::filesystem::path& path);
/// Records a file that the run wrote, for its summary: addRunFile(data, "schedule", path). Does
/// nothing without a run.
LIBVARROW_API void addRunFile(const ModuleData& data, const std::string& kind,
                              const boost::filesystem::path& path);
/// Records that the plan breaks a rule; call it once for each rule. The run continues, and its host
/// exits with the status for broken rules. Does nothing without a run.
LIBVARROW_API void reportRulesBroken(const ModuleData& data, const std::string& text);
/// Records that the plan keeps a rule; call it once for each rule. Does nothing without a run.
LIBVARROW_API void reportRuleKept(const ModuleData& data, const std::string& text);

}  // namespace libvarrow
