#include "host/run_facts.h"

#include <boost/config.hpp>
#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <boost/filesystem/operations.hpp>
#include <thread>

#include "host/Run.h"
#include "host/checksum.h"
#include "host/json_string.h"
#include "host/system.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/PlugInBuild.h"
#include "libvarrow/version.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// A checksum of programs and libraries would take longer than many runs.
Json::Value codeFacts(const fs::path& file, const std::string& buildId) {
  Json::Value facts(Json::objectValue);
  facts["file"] = jsonString(fs::absolute(file).lexically_normal());
  if (buildId.empty()) {
    facts["sha256"] = checksum(file);
  } else {
    facts["build_id"] = buildId;
  }
  return facts;
}

Json::Value libraryFacts(const void* address) {
  return codeFacts(boost::dll::symbol_location_ptr(address), system::buildId(address));
}

Json::Value libraries() {
  static const char addressHere = 0;
  Json::Value list(Json::arrayValue);
  list.append(libraryFacts(reinterpret_cast<const void*>(&InitRootLogger)));
  list.append(libraryFacts(&addressHere));
  return list;
}

std::string versionText(std::uint32_t number) {
  return std::to_string(number / LIBVARROW_VERSION_OF(1, 0, 0)) + "." +
         std::to_string(number / LIBVARROW_VERSION_OF(0, 1, 0) % 1000) + "." +
         std::to_string(number % LIBVARROW_VERSION_OF(0, 1, 0));
}

// The manager has checked the build of each plug-in.
Json::Value pluginFacts(const fs::path& file, const boost::dll::shared_library& library) {
  constexpr const char* kBuild = "libvarrowPlugInBuild";
  Json::Value facts = codeFacts(file, system::buildId(&library.get<const char>("initModule")));
  facts["name"] = jsonString(file.stem());
  if (library.has(kBuild)) {
    facts["version"] = versionText(library.get<const PlugInBuild>(kBuild).versionNumber);
  }
  return facts;
}

Json::Value plugins(const HostState& state) {
  Json::Value list(Json::arrayValue);
  for (const fs::path& file : state.pluginFiles) {
    const auto* const library = state.plugins->findDll(file.stem().string());
    if (library != nullptr) list.append(pluginFacts(file, *library));
  }
  return list;
}

Json::Value machineFacts() {
  const system::Machine machine = system::machine();
  Json::Value facts(Json::objectValue);
  facts["name"] = jsonString(machine.name);
  facts["system"] = jsonString(machine.system);
  facts["processors"] = std::thread::hardware_concurrency();
  facts["memory"] = Json::UInt64(machine.memory);
  return facts;
}

}  // namespace

Json::Value runFacts(const RunOptions& options, const HostState& state) {
  Json::Value facts(Json::objectValue);
  facts["host"] = state.name;
  if (!state.version.empty()) facts["version"] = state.version;
  facts["library"] = LIBVARROW_VERSION;
  facts["compiler"] = BOOST_COMPILER;
  facts["program"] = codeFacts(boost::dll::program_location(), system::programBuildId());
  facts["libraries"] = libraries();
  facts["plugins"] = plugins(state);
  facts["machine"] = machineFacts();
  facts["process"]["id"] = Json::UInt64(system::processId());
  facts["pipeline"] = jsonString(fs::absolute(options.pipeline));
  facts["with"] = facts["set"] = facts["command_line"] = Json::Value(Json::arrayValue);
  for (const auto& file : options.with) facts["with"].append(jsonString(fs::absolute(file)));
  for (const std::string& setting : options.set) facts["set"].append(setting);
  for (const std::string& argument : state.arguments) {
    facts["command_line"].append(jsonString(argument));
  }
  facts["folder_of_inputs"] = jsonString(inputFolder(options));
  facts["dumps"] = dumpLevelText(options.dumps);
  facts["until"] = options.until;
  facts["from"] = options.from.empty() ? "" : jsonString(fs::absolute(options.from));
  return facts;
}

const char* dumpLevelText(DumpLevel level) {
  return level == DumpLevel::All ? "all" : level == DumpLevel::Brief ? "brief" : "none";
}

}  // namespace libvarrow::host
