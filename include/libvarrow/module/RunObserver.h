// The observer of a run, which is notified of its steps, limits their dumps and can end it.
#pragma once

#include <boost/filesystem/path.hpp>
#include <chrono>
#include <stdexcept>
#include <string>

#include "libvarrow/Export.h"

namespace libvarrow {

class Module;
class ModuleData;

/// The files that a step's frame writes, see Module::process().
enum class DumpLevel {
  All,    ///< all of them
  Brief,  ///< the key figures only: in_info.json and out_info.json
  None    ///< none
};

/// Ends a run on request. Thrown before the next step of a chain, and by throwIfEndRequested().
class LIBVARROW_API RunEnded : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Observer of a run. A host derives a class and gives the run's data a pointer to it:
///
///     class Progress : public libvarrow::RunObserver {
///      public:
///       void stepBegins(libvarrow::Module& step, libvarrow::ModuleData& data) override {
///         std::cerr << data.dumpPath << ' ' << step.getModuleName() << '\n';
///       }
///     };
///     Progress progress;
///     data.setObserver(&progress);
///     executor.process(&data);
///
/// A step is one call of Module::process(), chains included. The functions for steps are called by
/// the thread that runs the step, those for rules, files and spans by any thread of a module. The
/// base class does nothing, skips no step and requests all dumps.
class LIBVARROW_API RunObserver {
 public:
  RunObserver() = default;
  RunObserver(const RunObserver&) = delete;
  RunObserver& operator=(const RunObserver&) = delete;
  virtual ~RunObserver();

  /// Called before the step's first dump. An exception ends the run; stepFails() is then not called
  /// for this step.
  virtual void stepBegins(Module& step, ModuleData& data);
  /// Called after the step's last dump. An exception ends the run, too.
  virtual void stepEnds(Module& step, ModuleData& data);
  /// Called while an exception leaves the step, for each step that it leaves, the inner one first.
  /// The data is as the failing step left it.
  virtual void stepFails(Module& step, ModuleData& data) noexcept;

  /// Called by reportRulesBroken(), with a text for users. The run continues.
  virtual void rulesBroken(const std::string& text);
  /// Returns the path of an output file for libvarrow::outputPath(). The base returns `path`.
  virtual boost::filesystem::path outputPath(const boost::filesystem::path& path);
  /// Records an input file and returns its path for libvarrow::inputPath(). The base returns
  /// `path`.
  virtual boost::filesystem::path inputPath(const boost::filesystem::path& path);
  /// Called by addRunFile(). The base does nothing.
  virtual void fileWritten(const std::string& kind, const boost::filesystem::path& path);

  /// Returns the files that the next step writes. Called once for each step, before stepBegins().
  virtual DumpLevel dumpLevel() const;
  /// Returns true when the run must end as soon as possible. Called before each step of a chain,
  /// and by modules from any thread: overrides must be thread-safe.
  virtual bool isEndRequested() const noexcept;

  /// Called by reportRuleKept(), with a text for users.
  virtual void ruleKept(const std::string& text);
  /// Called at the end of a TraceSpan, by its thread.
  virtual void spanEnds(const std::string& name, std::chrono::steady_clock::time_point begin,
                        std::chrono::steady_clock::time_point end) noexcept;
  /// Returns true when a chain must not run `step`. Called before each step of a chain, with the
  /// dump path of the step in `data`. A skipped step neither begins nor ends.
  virtual bool skipsStep(Module& step, const ModuleData& data);
};

/// Returns true when the run of `data` must end as soon as possible; false without an observer.
/// Thread-safe as long as no thread sets the observer.
LIBVARROW_API bool isEndRequested(const ModuleData& data) noexcept;

/// Throws RunEnded when isEndRequested(). A long module calls it where its data is consistent:
///
///     for (const Order& order : orders) {
///       libvarrow::throwIfEndRequested(*data);
///       place(order);
///     }
LIBVARROW_API void throwIfEndRequested(const ModuleData& data);

}  // namespace libvarrow
