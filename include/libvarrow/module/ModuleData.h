// The data that a pipeline's modules work on in turn.
#pragma once

#include <json/value.h>

#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

class StatisticsContainer;

/// Base of a host's shared data object. A host overrides what it wants to see in the dumps that
/// are written before and after every module. One thread at a time.
class LIBVARROW_API ModuleData {
 public:
  ModuleData() = default;
  ModuleData(const ModuleData&) = default;
  ModuleData& operator=(const ModuleData&) = default;

  virtual ~ModuleData();

  /// A short description of the data (sizes, counts). Null, as the base gives, is not dumped.
  virtual Json::Value getBaiscInfoJson();

  /// Writes a detailed text dump to the file `path`, whose directory may not exist yet
  /// (AutoCreateDirFileStream makes it). The base does nothing.
  virtual void dumpDetailInfo(std::string path) const;

  /// Writes a full debug dump into the directory `path`, which ends in "/" and may not exist yet.
  /// The base does nothing.
  virtual void dump4Debug(std::string path) const;

  /// getBaiscInfoJson() as text indented by tabs; the value is also copied to `*out` unless null.
  std::string getBaiscInfo(Json::Value* out);

  /// Where modules record; not owned. Null: nothing is recorded.
  StatisticsContainer* statisticsContainer = nullptr;

  /// Prefix, with its trailing "/", of the dump files of the current step. File names are appended
  /// as they are: "" dumps into the current directory, "run" beside it, as "runin_info.json".
  std::string dumpPath;
};

}  // namespace libvarrow
