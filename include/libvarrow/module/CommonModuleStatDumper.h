// A module that writes statistics to a file.
#pragma once

#include <string>

#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// A module that writes the statistics container that the data carries while it runs: its own
/// entry, "Module::NAME", with "TimeStatistic" and "contextIn". To write a whole tree, give
/// StatisticsContainer::dumpToFile or a TimedStatDumper the root.
///
/// In JSON: {"CommonModuleStatDumper": {"file": "stat.json"}}.
class LIBVARROW_API CommonModuleStatDumper : public Module {
 public:
  /// The configuration in a pipeline file.
  struct LIBVARROW_API Data4Bind {
    std::string file;  ///< the path for CommonStatistics::dumpToFile

    /// Binds the required key "file".
    void setBind(cppbind::Binder* binder, bool bindFields);
  };

  /// Copies `record`.
  explicit CommonModuleStatDumper(const Data4Bind& record) : record_(record) {}

  /// Returns a copy of the record.
  Data4Bind getData4Bind() const { return record_; }

  void processImp(ModuleData* data) override;

  /// Writes `data->statisticsContainer` (not null) and returns `data`.
  ModuleData* processSpec(ModuleData* data);

 private:
  Data4Bind record_;
};

}  // namespace libvarrow
