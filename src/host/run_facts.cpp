#include "host/run_facts.h"

#include <boost/config.hpp>
#include <boost/filesystem/operations.hpp>

#include "host/one_line.h"
#include "libvarrow/json/json.h"
#include "libvarrow/version.h"

namespace libvarrow::host {

namespace fs = boost::filesystem;

Json::Value runFacts(const RunOptions& options, const HostState& state) {
  Json::Value facts(Json::objectValue);
  facts["host"] = state.name;
  if (!state.version.empty()) facts["version"] = state.version;
  facts["library"] = LIBVARROW_VERSION;
  facts["compiler"] = BOOST_COMPILER;
  facts["pipeline"] = fs::absolute(options.pipeline).generic_string();
  facts["with"] = facts["set"] = facts["command_line"] = Json::Value(Json::arrayValue);
  for (const auto& file : options.with) facts["with"].append(fs::absolute(file).generic_string());
  for (const std::string& setting : options.set) facts["set"].append(setting);
  for (const std::string& argument : state.arguments) facts["command_line"].append(argument);
  return facts;
}

std::string oneLineOf(const Json::Value& value) {
  return oneLine(Json2Str(value));
}

}  // namespace libvarrow::host
