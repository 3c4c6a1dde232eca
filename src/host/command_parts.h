// The private members of CommandOptions and CommandContext.
#pragma once

#include <sstream>

#include "host/system.h"
#include "libvarrow/host/Command.h"

namespace CLI {
class App;
}

namespace libvarrow {

namespace host {
struct HostState;
}

struct CommandOptions::Imp {
  CLI::App& app;
};

struct CommandContext::Imp {
  Host& host;
  host::HostState& state;
  host::system::ResultStream& results;
  bool wantsJson = false;
  std::ostringstream out{};
};

}  // namespace libvarrow
