// The commands of every host, one file each.
#pragma once

#include <memory>

#include "host/HostState.h"

namespace libvarrow::host {

///@{
/// Return a command, which may refer to `state`.
std::unique_ptr<Command> runCommand(HostState& state);
std::unique_ptr<Command> checkCommand(HostState& state);
std::unique_ptr<Command> classesCommand(HostState& state);
std::unique_ptr<Command> schemaCommand(HostState& state);
std::unique_ptr<Command> reportCommand();
std::unique_ptr<Command> whyCommand(HostState& state);
std::unique_ptr<Command> diffCommand();
std::unique_ptr<Command> repeatCommand(HostState& state);
///@}

/// Adds the commands of every host to `state`.
void addCommands(HostState& state);

/// Adds an option that sets a field. Throws std::logic_error when an option has this name.
void addSetting(Setting setting, HostState& state);

}  // namespace libvarrow::host
