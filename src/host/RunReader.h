// Reading of a run folder.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>

namespace libvarrow::host {

/// A run folder, read for the commands that explain and compare runs. The files may be hostile or
/// incomplete: of the record, members that the host writes as text are text, and lists are lists of
/// the right kind. Errors are std::runtime_error and name the file or folder and the reason.
class RunReader {
 public:
  /// Reads and checks the record. `folder` may also be the record's path, or the file "latest" that
  /// names the latest run on systems without links. Throws without the record of a run.
  explicit RunReader(const boost::filesystem::path& folder);

  /// Returns the run folder, without links: "latest" may name another one meanwhile.
  const boost::filesystem::path& folder() const { return folder_; }
  /// Returns the record: run.json.
  const Json::Value& record() const { return record_; }
  /// Returns the list of the lines of steps.jsonl; empty without the file. Each is an object with
  /// the texts "event" and "step". A process that was killed can leave half a line, which is
  /// ignored. Throws when another line is not such an object.
  Json::Value steps() const;
  /// Returns statistics.json; null without the file. Throws when it is not JSON.
  Json::Value statistics() const;

 private:
  boost::filesystem::path folder_;
  Json::Value record_;
};

}  // namespace libvarrow::host
