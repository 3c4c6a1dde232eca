#include "host/CommandRunner.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <exception>
#include <iostream>
#include <utility>
#include <vector>

#include "base/nearest_name.h"
#include "base/system_text.h"
#include "host/command_parts.h"
#include "host/one_line.h"
#include "host/system.h"
#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/env/process_init.h"
#include "libvarrow/version.h"

namespace libvarrow::host {

namespace {

// Throws when an unknown option explains the parser's error: the parser reports a missing argument
// first.
void refuseUnknownOption(const CLI::App& app) {
  for (const std::string& argument : app.remaining()) {
    const std::string name = argument.substr(0, argument.find('='));
    if (name.compare(0, 2, "--") != 0 || name.size() == 2) continue;
    base::NearestName nearest(name);
    std::vector<std::string> known;
    for (const CLI::Option* const option : app.get_options()) {
      if (!option->get_lnames().empty()) known.push_back("--" + option->get_lnames().front());
    }
    for (const std::string& option : known) nearest.consider(option);
    throw UsageError("unknown option " + name + base::suggestion(nearest.name()));
  }
}

}  // namespace

int CommandRunner::run() {
  int status = kFailed;
  try {
    system::openStandardStreams();
    status = runCommand();
  } catch (const std::exception& error) {
    state_.lastLine = base::systemText(error.what());
  }
  constexpr std::size_t kLongestLine = 4000;
  cutText(state_.lastLine, kLongestLine);
  if (!state_.lastLine.empty()) {
    system::writeError(state_.name + ": " + oneLine(state_.lastLine) + '\n');
  }
  if (const int signal = system::EndSignals::received(); signal != 0) system::endBy(signal);
  return status;
}

int CommandRunner::runCommand() {
  const std::vector<std::string>& arguments = state_.arguments;
  const std::string first = arguments.empty() ? std::string() : arguments.front();
  if (first == "--help" || first == "-h") return print(help());
  if (first == "--version") return print(version());
  std::string seeHelp = "; see " + state_.name + " --help";
  try {
    const auto [command, words] = select();
    seeHelp = "; see " + state_.name + " " + command->name() + " --help";
    const auto begin = arguments.begin() + static_cast<std::ptrdiff_t>(words);
    bool wantsJson = false;
    const std::string helpText = parse(*command, wantsJson, {begin, arguments.end()});
    return helpText.empty() ? execute(*command, wantsJson, seeHelp) : print(helpText);
  } catch (const UsageError& error) {
    state_.lastLine = base::systemText(error.what()) + seeHelp;
    return kWrongUsage;
  }
}

int CommandRunner::print(const std::string& text) {
  std::cout << base::systemText(text) << std::flush;
  if (std::cout) return kDone;
  state_.lastLine = "cannot write standard output";
  return kFailed;
}

int CommandRunner::execute(Command& command, bool wantsJson, const std::string& seeHelp) {
  system::ResultStream results;
  porcessCommonInit();  // prints lines that are not results
  results.printToStandardError();
  CommandContext::Imp imp{host_, state_, results, wantsJson};
  CommandContext context(imp);
  setCrashLine(state_.name + ": " + command.name());
  const int status = executeIn(context, command, seeHelp);
  state_.plugins.reset();  // warns in the log, before the last line
  setCrashLine("");
  try {
    results.write(imp.out.str());
  } catch (const std::exception& error) {
    if (state_.lastLine.empty()) state_.lastLine = base::systemText(error.what());
    return status == kDone || status == kRulesBroken ? kFailed : status;
  }
  return status;
}

int CommandRunner::executeIn(CommandContext& context, Command& command,
                             const std::string& seeHelp) {
  try {
    return command.run(context);
  } catch (const UsageError& error) {
    state_.lastLine = base::systemText(error.what()) + seeHelp;
    return kWrongUsage;
  } catch (const std::exception& error) {
    state_.lastLine = base::systemText(error.what());
  } catch (...) {
    state_.lastLine = "an exception that is not a std::exception";
  }
  return command.failureStatus();
}

std::string CommandRunner::parse(Command& command, bool& wantsJson,
                                 std::vector<std::string> arguments) const {
  CLI::App app(command.about(), state_.name + " " + command.name());
  app.allow_windows_style_options(false);
  app.set_help_flag("--help", "this text");
  app.add_flag("--json", wantsJson, "prints results for programs");
  CommandOptions::Imp imp{app};
  CommandOptions options(imp);
  command.declare(options);
  for (const std::string& argument : arguments) {
    // The parser would take the next argument as the value.
    const bool isOption = argument.compare(0, 2, "--") == 0;
    if (isOption && argument.find('=') == argument.size() - 1) {
      throw UsageError(argument + " has no value");
    }
  }
  std::reverse(arguments.begin(), arguments.end());  // as the parser takes them
  try {
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    return app.help();
  } catch (const CLI::ParseError& error) {
    refuseUnknownOption(app);
    throw UsageError(error.what());
  }
  return std::string();
}

bool CommandRunner::has(const Command& command) const {
  return (!command.needsData() || state_.createData != nullptr) &&
         (!command.needsClasses() || state_.hasClasses());
}

// Names may have two words, "sweep expand".
CommandRunner::Selected CommandRunner::select() const {
  const std::vector<std::string>& arguments = state_.arguments;
  if (arguments.empty()) throw UsageError("no command is given");
  const std::string one = arguments[0];
  const std::string two = arguments.size() > 1 ? one + " " + arguments[1] : one;
  base::NearestName nearest(one);
  for (const auto& command : state_.commands) {
    if (!has(*command)) continue;
    if (command->name() == one) return {command.get(), 1};
    if (command->name() == two) return {command.get(), 2};
    nearest.consider(command->name());
  }
  const char* const kind = one.front() == '-' ? "option " : "command ";
  throw UsageError("unknown " + (one.empty() ? "command \"\"" : kind + one) +
                   base::suggestion(nearest.name()));
}

std::string CommandRunner::help() const {
  std::string list;
  std::size_t width = 0;
  for (const auto& command : state_.commands) width = std::max(width, command->name().size());
  for (const auto& command : state_.commands) {
    if (!has(*command)) continue;
    const std::string& name = command->name();
    list += "  " + name + std::string(width - name.size() + 2, ' ') + command->about() + '\n';
  }
  if (!list.empty()) list = "Commands:\n" + list + '\n';
  return state_.about + "\n\nUsage: " + state_.name + " COMMAND ...\n\n" + list + state_.name +
         " COMMAND --help tells the arguments of a command; " + state_.name +
         " --version the version.\n";
}

std::string CommandRunner::version() const {
  const std::string own = state_.version.empty() ? std::string() : " " + state_.version;
  return state_.name + own + ", with libvarrow " + LIBVARROW_VERSION + "\n";
}

}  // namespace libvarrow::host
