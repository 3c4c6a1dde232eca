// The pipeline of a run: its file, with the changes of the run's options.
#pragma once

#include <cppbind/Checker.h>
#include <cppbind/ClassRegister.h>
#include <cppbind/JsonPlaces.h>
#include <cppbind/TextPositions.h>
#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/StepPaths.h"
#include "host/json_path.h"
#include "libvarrow/host/RunOptions.h"
#include "libvarrow/host/RunResult.h"
#include "libvarrow/module/Module.h"

namespace libvarrow::host {

class PipelineSource {
 public:
  /// Reads the pipeline file. Collects faults instead of throwing.
  PipelineSource(const boost::filesystem::path& pipeline, const cppbind::ClassRegister& modules);
  /// Reads the pipeline file and applies the overrides of `options`.
  PipelineSource(const RunOptions& options, const cppbind::ClassRegister& modules);
  PipelineSource(const PipelineSource&) = delete;
  PipelineSource& operator=(const PipelineSource&) = delete;

  /// Applies the overrides of `options`. Does nothing when the pipeline file has faults. Call it at
  /// most once, and before check().
  void apply(const RunOptions& options, const cppbind::ClassRegister& modules);

  /// Finds the faults of the pipeline and of the rule files that it names. Does nothing when an
  /// error was found before. Relative rule files start from `inputs`.
  void check(const cppbind::ClassRegister& modules, const cppbind::ClassRegister& rules,
             const boost::filesystem::path& inputs);

  /// Returns all faults found so far.
  const std::vector<FileFaults>& faults() const { return faults_; }
  /// Returns each setting with the number of fields that it set.
  const std::vector<std::pair<std::string, std::size_t>>& changes() const { return changes_; }
  /// Returns the text of the pipeline file, which was read and is JSON.
  const std::string& text() const { return origins_.front().places->text(); }
  /// Returns the pipeline that runs, without "$schema".
  const Json::Value& json() const;
  /// Returns the chain of the pipeline, in any layout. Throws like the loaders of the library.
  /// Precondition: check() found no errors.
  boost::shared_ptr<Module> load(cppbind::ClassRegister& modules) const;

  /// Returns the place of a step, "1_ChainedModule/0_Plan": "pipeline.json:12:5", or only the name
  /// of the file or the override.
  std::string placeOf(const std::string& step) const;

 private:
  // A file or an option that sets values of the pipeline.
  struct Origin {
    std::string name;
    std::vector<JsonPath> set{};
    std::optional<cppbind::JsonPlaces> places{};                // of a file
    mutable std::optional<cppbind::TextPositions> positions{};  // once they are needed
    cppbind::Faults warnings{};                                 // about the text alone
  };

  // Reads a file and adds it to the origins. Returns null when it has faults.
  std::unique_ptr<cppbind::Checker> read(const boost::filesystem::path& file,
                                         const cppbind::ClassRegister* modules);
  void addFault(const std::string& origin, const std::string& message);
  void addFaults(std::string origin, cppbind::Faults faults);
  void checkRuleFileNamed(const std::string& name, const cppbind::ClassRegister& rules,
                          const boost::filesystem::path& inputs);
  void checkChanged(const cppbind::ClassRegister& modules);
  const Origin& originOf(const JsonPath& path) const;
  void locate(cppbind::Fault& fault, const JsonPath& path, bool isKey, const Origin& origin) const;

  std::vector<Origin> origins_;                // the pipeline file first
  std::unique_ptr<cppbind::Checker> checker_;  // of the pipeline file; null: it has faults
  std::vector<FileFaults> faults_;
  std::vector<std::pair<std::string, std::size_t>> changes_;
  std::optional<Json::Value> changed_;            // with the overrides, if there are any
  mutable std::optional<StepPaths> stepPaths_{};  // once they are needed
};

}  // namespace libvarrow::host
