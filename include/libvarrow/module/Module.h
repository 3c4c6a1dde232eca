// The base of a pipeline step.
#pragma once

#include <string>

#include "cppbind/Object.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/ModuleData.h"
#include "libvarrow/module/RunObserver.h"
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
/// Not thread-safe, and neither copyable nor movable.
class LIBVARROW_API Module : public cppbind::Object {
 public:
  Module();
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module() override;

  /// Runs the step on `data` (not null), together with its dumps and statistics; call this
  /// function, do not override it. P is the data's dumpPath. In this order:
  ///  - writes P"in_info.json" (unless the info is null) and makes the data write P"in_detail.txt"
  ///    and P"before_process/";
  ///  - when the data carries statistics: adds the child container "Module::NAME" with
  ///    "contextIn", the info, and "TimeStatistic", two time points around that record (not around
  ///    the work: time that with a TimeRecoderHelper), and makes it the data's container;
  ///  - calls processImp;
  ///  - records "contextOut" and restores the data's container;
  ///  - dumps again: P"out_info.json", P"out_detail.txt", P"after_process/", with the current P;
  ///  - writes moduleStatistics to P"module_stat.json".
  ///
  /// The data's observer, if any, is told before the first and after the last of these, and selects
  /// the dumps. With less than DumpLevel::All, the frame creates the directory for
  /// setAutoChangeCurrentDirToDumpPath().
  ///
  /// Catches nothing. After an exception, the data's statistics container, its dumpPath and the
  /// current directory are as the failing step left them: a caller that continues must restore
  /// them.
  virtual void process(ModuleData* data);

  /// Does the module's work; called once by each process().
  virtual void processImp(ModuleData* data) = 0;

  /// Returns the name in logs, statistics and dump directories: the name under which the module was
  /// created, else its class.
  virtual std::string getModuleName();

  /// Makes later calls of process() run the work in the dump directory, which must exist. The
  /// argument is ignored: the option cannot be switched off. The current directory belongs to the
  /// whole process, so modules with this option must not run at the same time. process() throws
  /// boost::filesystem::filesystem_error when the directory does not exist; the dumps before the
  /// work do not create it when the data's info is null.
  void setAutoChangeCurrentDirToDumpPath(bool);

 protected:
  /// The module's own statistics over all its runs: a container with an empty name.
  StatisticsContainer moduleStatistics;

 private:
  void dumpBefore(ModuleData& data, const std::string& path, DumpLevel level) const;
  void dumpAfter(ModuleData& data, const std::string& path, DumpLevel level) const;
  void enterStatistics(ModuleData& data, StatisticsContainer& parent);

  bool autoChangeCurrentDirToDumpPath_ = false;
};

}  // namespace libvarrow
