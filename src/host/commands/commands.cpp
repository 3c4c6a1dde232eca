#include "host/commands/commands.h"

namespace libvarrow::host {

void addCommands(HostState& state) {
  state.commands.push_back(runCommand(state));
  state.commands.push_back(checkCommand(state));
  state.commands.push_back(classesCommand(state));
  state.commands.push_back(schemaCommand(state));
  state.commands.push_back(reportCommand());
  state.commands.push_back(whyCommand(state));
  state.commands.push_back(diffCommand());
  state.commands.push_back(repeatCommand(state));
}

}  // namespace libvarrow::host
