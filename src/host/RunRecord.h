// The record of a run: run.json in its folder.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <map>
#include <set>
#include <string>

#include "host/records/configuration.h"
#include "libvarrow/host/RunResult.h"

namespace libvarrow::host {

/// Returns the text of an outcome in run.json: "done", "rules broken", ...
const char* outcomeText(RunResult::End end);

/// Writer of run.json. Each write replaces the whole file, so that readers never see half of it.
class RunRecord {
 public:
  /// The member of every record by which a folder is recognised; its value is the format.
  static constexpr const char* kMark = "libvarrow_run";
  static constexpr int kFormat = 1;

  /// Returns true when `folder` has a run.json that this class wrote.
  static bool isIn(const boost::filesystem::path& folder);

  /// Returns the names in `folder` when its run ended, and that of its page; empty for a run that
  /// did not end.
  static std::set<std::string> entriesIn(const boost::filesystem::path& folder);

  /// Takes what is known at the begin of the run.
  RunRecord(const boost::filesystem::path& folder, const Json::Value& facts);

  /// Writes the record of a run that has begun. Throws std::runtime_error with the system's reason.
  void begin();
  /// Adds the pipeline with its defaults, and its seeds, and writes the record. Throws like
  /// begin().
  void setConfiguration(Configuration configuration);
  /// Adds the outcome and `facts` to the record and writes it. Throws like begin().
  void end(const RunResult& result, const Json::Value& facts);

 private:
  void set(const std::string& key, const Json::Value& value);
  void write() const;

  const boost::filesystem::path folder_;
  std::map<std::string, std::string> members_;  // as JSON text, which is written several times
};

/// Writes `text` to `file`, which is replaced as a whole or not at all. Throws std::runtime_error
/// with the system's reason.
void writeWhole(const boost::filesystem::path& file, const std::string& text);

}  // namespace libvarrow::host
