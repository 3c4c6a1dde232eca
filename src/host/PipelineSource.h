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

#include "host/json_path.h"
#include "libvarrow/host/RunOptions.h"
#include "libvarrow/host/RunResult.h"
#include "libvarrow/module/Module.h"

namespace libvarrow::host {

class PipelineSource {
 public:
  /// Reads the pipeline file and applies the overrides of `options`. Collects faults instead of
  /// throwing.
  PipelineSource(const RunOptions& options, const cppbind::ClassRegister& modules);

  /// Finds the faults of the pipeline and of the rule files that it names. Does nothing when an
  /// error was found before. Relative rule files start from `inputs`.
  void check(const cppbind::ClassRegister& modules, const cppbind::ClassRegister& rules,
             const boost::filesystem::path& inputs);

  /// Returns all faults found so far.
  const std::vector<FileFaults>& faults() const { return faults_; }
  /// Returns each setting with the number of fields that it set.
  const std::vector<std::pair<std::string, std::size_t>>& changes() const { return changes_; }
  /// Returns the text of the pipeline file, which was read and is JSON.
  const std::string& text() const { return *origins_.front().text; }
  /// Returns the pipeline that runs, without "$schema".
  const Json::Value& json() const { return json_; }
  /// Returns the chain of the pipeline, in any layout. Throws like the loaders of the library.
  /// Precondition: check() found no errors.
  boost::shared_ptr<Module> load(cppbind::ClassRegister& modules) const;

  /// Returns the place of a step, "1_ChainedModule/0_Plan": "pipeline.json:12:5", or only the name
  /// of the file or the override.
  std::string placeOf(const std::string& step) const;

 private:
  // The places of the values of a text.
  struct Places {
    explicit Places(const std::string& text) : values(text), positions(values.text()) {}

    cppbind::JsonPlaces values;
    cppbind::TextPositions positions;  // of the text of `values`
  };

  // A file or an option that sets values of the pipeline.
  struct Origin {
    std::string name;
    std::optional<std::string> text{};  // of a file
    std::vector<JsonPath> set{};
    cppbind::Faults warnings{};              // about the text alone
    mutable std::optional<Places> places{};  // once they are needed
  };

  // A step of the pipeline: its path, or that of the innermost step whose place is known.
  struct StepNode {
    const Json::Value* json;  // the value with the steps of a chain; null: none are known
    JsonPath path{};
    bool hasNames = false;  // the steps are named modules

    void enter(const Json::Value& module);
    // Returns the step of this chain whose number is at `begin` of the text.
    StepNode step(const std::string& step, std::size_t begin) const;
  };

  StepNode chainOf(const std::string& step) const;

  // Reads a file and adds it to the origins. Returns null when it has faults.
  std::unique_ptr<cppbind::Checker> read(const boost::filesystem::path& file,
                                         const cppbind::ClassRegister* modules);
  void addFault(const std::string& origin, const std::string& message);
  void addFaults(std::string origin, cppbind::Faults faults);
  void apply(const RunOptions& options, const cppbind::ClassRegister& modules);
  void checkChanged(const cppbind::ClassRegister& modules);
  const Origin& originOf(const JsonPath& path) const;
  void locate(cppbind::Fault& fault, const JsonPath& path, bool isKey, const Origin& origin) const;

  std::vector<Origin> origins_;                // the pipeline file first
  std::unique_ptr<cppbind::Checker> checker_;  // of the pipeline file, until it is checked
  std::vector<FileFaults> faults_;
  std::vector<std::pair<std::string, std::size_t>> changes_;
  Json::Value json_;
  mutable std::optional<std::pair<std::string, StepNode>> lastChain_{};  // whose step was found
};

}  // namespace libvarrow::host
