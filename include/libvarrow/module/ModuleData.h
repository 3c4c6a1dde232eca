// The data that a pipeline's modules work on in turn.
#pragma once

#include <json/value.h>

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

class RunObserver;
class StatisticsContainer;

namespace detail {

// A pointer that copies do not take over: a copy of the data belongs to no run.
class ObserverLink {
 public:
  ObserverLink() = default;
  ObserverLink(const ObserverLink&) noexcept {}
  ObserverLink& operator=(const ObserverLink&) noexcept { return *this; }

  RunObserver* observer = nullptr;
};

}  // namespace detail

/// Base of a host's shared data object. A host overrides the functions for the dumps that are
/// written before and after every module. Not thread-safe.
class LIBVARROW_API ModuleData {
 public:
  ModuleData() = default;
  ModuleData(const ModuleData&) = default;
  ModuleData& operator=(const ModuleData&) = default;

  virtual ~ModuleData();

  /// Returns a short description of the data (sizes, counts). Null, which the base returns, is not
  /// dumped.
  virtual Json::Value getBaiscInfoJson();

  /// Writes a detailed text dump to the file `path`, whose directory may not exist yet
  /// (AutoCreateDirFileStream creates it). The base does nothing.
  virtual void dumpDetailInfo(std::string path) const;

  /// Writes a full debug dump into the directory `path`, which ends in "/" and may not exist yet.
  /// The base does nothing.
  virtual void dump4Debug(std::string path) const;

  /// Sets the data to the state that dump4Debug(path) wrote, so that a run can continue at a step:
  /// later dumps must be those of the run that wrote it. Throws std::runtime_error when that is not
  /// possible; the data may then be in any state. The base always throws.
  virtual void restore4Debug(const std::string& path);

  /// Returns getBaiscInfoJson() as text indented by tabs; also copies the value to `*out` unless
  /// `out` is null.
  std::string getBaiscInfo(Json::Value* out);

  /// The container in which modules record; not owned. Null: nothing is recorded.
  StatisticsContainer* statisticsContainer = nullptr;

  /// The prefix, with its trailing "/", of the dump files of the current step. File names are
  /// appended unchanged: "" dumps into the current directory, and "run" next to it, as
  /// "runin_info.json".
  std::string dumpPath;

  /// Sets the observer of the run; not owned. Null, the initial value, also of copies: none. An
  /// assignment does not change it. Call it before the run, not in a step.
  void setObserver(RunObserver* observer) { link_.observer = observer; }
  /// Returns the observer of the run, or null.
  RunObserver* observer() const { return link_.observer; }

 private:
  detail::ObserverLink link_;
};

}  // namespace libvarrow
