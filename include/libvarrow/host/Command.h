// A command of a host's command line.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "libvarrow/host/Export.h"

namespace libvarrow {

class Host;

/// Describes the arguments of a command, without the parser's headers.
class LIBVARROW_HOST_API CommandOptions {
 public:
  virtual ~CommandOptions();
  /// Adds `--NAME VALUE`; the variable keeps its value when the option is not given.
  virtual void addOption(const std::string& name, std::string& value, const std::string& about) = 0;
  /// Adds `--NAME`.
  virtual void addFlag(const std::string& name, bool& value, const std::string& about) = 0;
  /// Adds a required argument without a name, called `NAME` in --help.
  virtual void addArgument(const std::string& name, std::string& value,
                           const std::string& about) = 0;
  /// Adds all remaining arguments: at least `least`.
  virtual void addArguments(const std::string& name, std::vector<std::string>& values,
                            std::size_t least, const std::string& about) = 0;
};

/// A command of the command line:
///
///     class Count : public libvarrow::Command {
///      public:
///       Count() : Command("count", "Counts the orders of a file.") {}
///       void declare(libvarrow::CommandOptions& options) override {
///         options.addArgument("FILE", file_, "the orders");
///       }
///       int execute(libvarrow::Host&, std::ostream& out) override {
///         out << countOrders(file_) << '\n';
///         return libvarrow::kDone;
///       }
///      private:
///       std::string file_;
///     };
class LIBVARROW_HOST_API Command {
 public:
  /// Creates a command with its name on the command line and its line in --help.
  Command(std::string name, std::string about);
  virtual ~Command();
  const std::string& name() const { return name_; }
  const std::string& about() const { return about_; }

  /// Declares the arguments. Called before the command line is read.
  virtual void declare(CommandOptions& options) = 0;
  /// Does the work and returns the exit status. `out` is standard output. An exception becomes one
  /// line on standard error and the status kFailed.
  virtual int execute(Host& host, std::ostream& out) = 0;

 private:
  std::string name_;
  std::string about_;
};

}  // namespace libvarrow
