#include "libvarrow/host/Command.h"

#include <utility>

#include "host/command_parts.h"
#include "host/program_run.h"

namespace libvarrow {

Command::Command(std::string name, std::string about)
    : name_(std::move(name)), about_(std::move(about)) {}

Command::~Command() = default;

void Command::declare(CommandOptions&) {}

int Command::failureStatus() const {
  return kFailed;
}

bool Command::needsData() const {
  return false;
}

bool Command::needsClasses() const {
  return false;
}

CommandContext::CommandContext(Imp& imp) : imp_(imp) {}

CommandContext::~CommandContext() = default;

Host& CommandContext::host() const {
  return imp_.host;
}

std::ostream& CommandContext::out() const {
  return imp_.out;
}

bool CommandContext::wantsJson() const {
  return imp_.wantsJson;
}

ExitStatus CommandContext::runPipeline(const RunOptions& options) const {
  return runPipeline(options, imp_.out);
}

ExitStatus CommandContext::runPipeline(const RunOptions& options, std::ostream& summary) const {
  return host::runPipeline(options, imp_.state, imp_.results, imp_.wantsJson, summary);
}

}  // namespace libvarrow
