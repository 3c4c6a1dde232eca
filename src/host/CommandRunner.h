// Runs the command of a command line.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/HostState.h"

namespace libvarrow::host {

class CommandRunner {
 public:
  /// The arguments must outlive the object.
  CommandRunner(Host& host, HostState& state) : host_(host), state_(state) {}

  /// Runs the command of `state.arguments`, writes its last line, and returns the exit status. When
  /// a signal ended the command, ends the process by that signal.
  int run();

 private:
  struct Selected {
    Command* command;
    std::size_t words;  // of its name
  };

  int runCommand();
  int print(const std::string& text);
  int execute(Command& command, bool wantsJson, const std::string& seeHelp);
  // Reads the arguments of one command. Returns the text of --help if that is wanted.
  std::string parse(Command& command, bool& wantsJson, std::vector<std::string> arguments) const;
  int executeIn(CommandContext& context, Command& command, const std::string& seeHelp);
  Selected select() const;
  bool has(const Command& command) const;
  std::string help() const;
  std::string version() const;

  Host& host_;
  HostState& state_;
};

}  // namespace libvarrow::host
