#include "host/run_facts.h"

#include <boost/config.hpp>
#include <boost/filesystem/operations.hpp>

#include "host/json_string.h"
#include "libvarrow/version.h"

namespace libvarrow::host {

namespace fs = boost::filesystem;

Json::Value runFacts(const RunOptions& options, const HostState& state) {
  Json::Value facts(Json::objectValue);
  facts["host"] = state.name;
  if (!state.version.empty()) facts["version"] = state.version;
  facts["library"] = LIBVARROW_VERSION;
  facts["compiler"] = BOOST_COMPILER;
  facts["pipeline"] = jsonString(fs::absolute(options.pipeline));
  facts["with"] = facts["set"] = facts["command_line"] = Json::Value(Json::arrayValue);
  for (const auto& file : options.with) facts["with"].append(jsonString(fs::absolute(file)));
  for (const std::string& setting : options.set) facts["set"].append(setting);
  for (const std::string& argument : state.arguments) {
    facts["command_line"].append(jsonString(argument));
  }
  return facts;
}

}  // namespace libvarrow::host
