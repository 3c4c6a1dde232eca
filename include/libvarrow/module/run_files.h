// The files and verdicts of the run that a module works in.
#pragma once

#include <boost/filesystem/path.hpp>
#include <stdexcept>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

class ModuleData;

/// Ends a run whose plan breaks rules.
class LIBVARROW_API RulesBroken : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Returns `path`, from the folder of the run unless it is absolute. Without a run: `path`.
LIBVARROW_API boost::filesystem::path outputPath(const ModuleData& data,
                                                 const boost::filesystem::path& path);
/// Returns `path`, from the folder of inputs unless it is absolute, and records it as an input of
/// the run. Without a run: `path`.
LIBVARROW_API boost::filesystem::path inputPath(const ModuleData& data,
                                                const boost::filesystem::path& path);
/// Records a file that the run wrote, for its summary: addRunFile(data, "schedule", path). Without
/// a run: no effect.
LIBVARROW_API void addRunFile(const ModuleData& data, const std::string& kind,
                              const boost::filesystem::path& path);
/// Tells the run that its plan breaks a rule; one call for each rule. The run continues. Without a
/// run: no effect.
LIBVARROW_API void reportRulesBroken(const ModuleData& data, const std::string& text);

}  // namespace libvarrow
