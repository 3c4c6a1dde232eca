// One step of a pipeline.
#pragma once

#include <string>

#include "cppbind/Object.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/ModuleData.h"
#include "libvarrow/statistics/StatisticsContainer.h"

namespace libvarrow {

/// Base of a pipeline step. A host derives a class, does its work in processImp, declares its
/// configuration in setBind (cppbind/imp/binder.h) and registers it by name.
///
///     class Dispatch : public libvarrow::Module {
///      public:
///       void processImp(libvarrow::ModuleData* data) override;
///       void setBind(cppbind::Binder* binder, bool bindFields) {
///         if (bindFields) binder->bind("rule", rule_, "SPT");
///       }
///      private:
///       std::string rule_;
///     };
///
/// Not thread safe, and neither copyable nor movable.
class LIBVARROW_API Module : public cppbind::Object {
 public:
  Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module() override;

  /// Runs the step on `data` (not null) in its frame; call this, do not override it. With P the
  /// data's dumpPath, in this order:
  ///  - writes P"in_info.json" (unless the info is null) and has the data write P"in_detail.txt"
  ///    and P"before_process/";
  ///  - when the data carries statistics: adds the child container "Module::NAME" with
  ///    "contextIn", the info, and "TimeStatistic", two time points around that record (not around
  ///    the work: time that with a TimeRecoderHelper), and makes it the data's container;
  ///  - calls processImp;
  ///  - records "contextOut" and gives the data its container back;
  ///  - dumps again: P"out_info.json", P"out_detail.txt", P"after_process/", with P as it is now;
  ///  - writes moduleStatistics to P"module_stat.json".
  ///
  /// Catches nothing. After an exception the data's statistics container, its dumpPath and the
  /// current directory are as the failing step had them: whoever goes on must restore them.
  virtual void process(ModuleData* data);

  /// The module's work, called once by each process().
  virtual void processImp(ModuleData* data) = 0;

  /// The name in logs, statistics and dump directories: the name that the module was created
  /// under, else its class.
  virtual std::string getModuleName();

  /// Has every later process() run the work in the dump directory, which must exist. Switches it
  /// on whatever the argument: there is no way back. The current directory is the whole process's,
  /// so modules that do this must not run at the same time. A directory that is not there (nothing
  /// is written before the work when the data has no info) throws
  /// boost::filesystem::filesystem_error.
  void setAutoChangeCurrentDirToDumpPath(bool);

 protected:
  /// The module's own statistics over all its runs; a container with the empty name.
  StatisticsContainer moduleStatistics;

 private:
  void dumpBefore(ModuleData& data, const std::string& path) const;
  void dumpAfter(ModuleData& data, const std::string& path) const;
  void enterStatistics(ModuleData& data, StatisticsContainer& parent);

  bool autoChangeCurrentDirToDumpPath_ = false;
};

}  // namespace libvarrow
