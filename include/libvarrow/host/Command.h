// A command of a host's command line.
#pragma once

#include <boost/filesystem/path.hpp>
#include <cstddef>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "libvarrow/host/Export.h"
#include "libvarrow/host/RunOptions.h"
#include "libvarrow/host/RunResult.h"

namespace libvarrow {

class Host;
namespace host {
class CommandRunner;
}

/// Error of arguments that their declaration permits and the command does not. The host writes it
/// as one line to standard error and exits with kWrongUsage.
class LIBVARROW_HOST_API UsageError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Declaration of a command's arguments. A variable keeps its value when its option is not given.
/// Paths are made absolute, from the directory in which the program was started.
class LIBVARROW_HOST_API CommandOptions {
 public:
  CommandOptions(const CommandOptions&) = delete;
  CommandOptions& operator=(const CommandOptions&) = delete;
  ~CommandOptions();

  ///@{
  /// Adds `--NAME VALUE`; a vector collects the values of a repeated option.
  void addOption(const std::string& name, std::string& value, const std::string& about);
  void addOption(const std::string& name, std::size_t& value, const std::string& about);
  void addOption(const std::string& name, boost::filesystem::path& value, const std::string& about);
  void addOption(const std::string& name, std::vector<std::string>& values,
                 const std::string& about);
  ///@}
  /// Adds `--NAME VALUE` with one of `choices`.
  void addChoice(const std::string& name, std::string& value,
                 const std::vector<std::string>& choices, const std::string& about);
  /// Adds `--NAME`.
  void addFlag(const std::string& name, bool& value, const std::string& about);
  ///@{
  /// Adds an argument that is given by its position; --help calls it NAME. addArguments() takes all
  /// that follow, at least `least`.
  void addArgument(const std::string& name, std::string& value, const std::string& about);
  void addOptionalArgument(const std::string& name, std::string& value, const std::string& about);
  void addArguments(const std::string& name, std::vector<std::string>& values, std::size_t least,
                    const std::string& about);
  ///@}

 private:
  friend class host::CommandRunner;
  struct Imp;
  explicit CommandOptions(Imp& imp);
  Imp& imp_;
};

/// Access of a running command to its program. When the command starts, plug-ins are not loaded,
/// the log is not set up, and the current directory is that in which the program was started. Text
/// printed to standard output goes to standard error, since modules and the library print there:
/// write results to out().
class LIBVARROW_HOST_API CommandContext {
 public:
  CommandContext(const CommandContext&) = delete;
  CommandContext& operator=(const CommandContext&) = delete;
  ~CommandContext();

  /// Returns the host whose command runs.
  Host& host() const;
  /// Returns the stream of results. The host writes its text to the real standard output when the
  /// command returns; the command fails if that is impossible.
  std::ostream& out() const;
  /// Returns true when --json was given.
  bool wantsJson() const;
  ///@{
  /// Runs a pipeline like the command run, with log, signals, summary and last line. The summary is
  /// written to out() or to `summary`.
  ExitStatus runPipeline(const RunOptions& options) const;
  ExitStatus runPipeline(const RunOptions& options, std::ostream& summary) const;
  ///@}

 private:
  friend class host::CommandRunner;
  struct Imp;
  explicit CommandContext(Imp& imp);
  Imp& imp_;
};

/// A command of the command line:
///
///     class Count : public libvarrow::Command {
///      public:
///       Count() : Command("count", "Counts the orders of a file.") {}
///       void declare(libvarrow::CommandOptions& options) override {
///         options.addArgument("FILE", file_, "the orders");
///       }
///       int run(libvarrow::CommandContext& context) override {
///         context.out() << countOrders(file_) << '\n';
///         return libvarrow::kDone;
///       }
///      private:
///       std::string file_;
///     };
class LIBVARROW_HOST_API Command {
 public:
  /// Creates a command with its name, which may have two words ("sweep expand"), and its line in
  /// --help.
  Command(std::string name, std::string about);
  virtual ~Command();
  ///@{
  /// Returns the name, or the line in --help.
  const std::string& name() const { return name_; }
  const std::string& about() const { return about_; }
  ///@}

  /// Declares the arguments. Called once, when the command is selected.
  virtual void declare(CommandOptions& options);
  /// Does the work and returns the exit status. An exception is written as one line to standard
  /// error, and the status is then failureStatus().
  virtual int run(CommandContext& context) = 0;
  /// Returns the status after an exception: kFailed.
  virtual int failureStatus() const;
  /// Returns true when the command needs the host's data. A host without data does not offer it.
  virtual bool needsData() const;
  /// Returns true when the command needs registered classes. A host without classes and plug-ins
  /// does not offer it.
  virtual bool needsClasses() const;

 private:
  std::string name_;
  std::string about_;
};

}  // namespace libvarrow
