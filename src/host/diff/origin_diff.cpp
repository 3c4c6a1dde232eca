#include "host/diff/origin_diff.h"

#include <boost/filesystem/path.hpp>
#include <map>
#include <set>

#include "host/diff/OwnFolders.h"
#include "host/json_string.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;
using Files = std::map<std::string, const Json::Value*>;

// Returns the name by which a file is found in another run, whose folders are others.
std::string nameOf(const Json::Value& file, const fs::path& folder) {
  const fs::path path = pathAt(file, "file");
  const fs::path relative = folder.empty() ? fs::path() : path.lexically_relative(folder);
  const bool isInside = !relative.empty() && *relative.begin() != "..";
  return jsonString(isInside ? relative : path.filename()).asString();
}

// A file that is listed twice was changed during the run: the last content counts.
Files filesOf(const Json::Value& list, const fs::path& folder) {
  Files files;
  for (const Json::Value& file : list) {
    const std::string name = textAt(file, "name");
    files[name.empty() ? nameOf(file, folder) : name] = &file;
  }
  return files;
}

const Json::Value* find(const Files& files, const std::string& name) {
  const auto found = files.find(name);
  return found == files.end() ? nullptr : found->second;
}

std::set<std::string> namesOf(const Files& left, const Files& right) {
  std::set<std::string> names;
  for (const auto& file : left) names.insert(file.first);
  for (const auto& file : right) names.insert(file.first);
  return names;
}

// Returns the text by which two contents are compared.
std::string buildOf(const Json::Value& file) {
  return textAt(file, "sha256") + textAt(file, "build_id");
}

std::optional<Lines> shown(const Json::Value* file, const char* key) {
  if (file == nullptr) return std::nullopt;
  return Lines{std::string(key) + " " + shownText(textAt(*file, key))};
}

// The record of a run that has not ended does not list its input files.
void diffInputs(const Json::Value& left, const Json::Value& right, DiffReport& report) {
  if (!left.isMember("inputs") || !right.isMember("inputs")) return;
  const Files ofLeft = filesOf(left["inputs"], pathAt(left, "folder_of_inputs"));
  const Files ofRight = filesOf(right["inputs"], pathAt(right, "folder_of_inputs"));
  for (const std::string& name : namesOf(ofLeft, ofRight)) {
    const Json::Value* const one = find(ofLeft, name);
    const Json::Value* const other = find(ofRight, name);
    const bool areBoth = one != nullptr && other != nullptr;
    if (areBoth && (buildOf(*one).empty() || buildOf(*other).empty())) {
      report.note("input file " + name + " has no checksum");
    } else if (!areBoth || buildOf(*one) != buildOf(*other)) {
      report.add({"input file " + name, shown(one, "sha256"), shown(other, "sha256")});
    }
  }
}

void noteBuild(const std::string& what, const Json::Value& left, const Json::Value& right,
               DiffReport& report) {
  if (buildOf(left) != buildOf(right)) report.note(what + ": another build");
}

void diffPlugins(const Json::Value& left, const Json::Value& right, DiffReport& report) {
  const Files ofLeft = filesOf(left["plugins"], "");
  const Files ofRight = filesOf(right["plugins"], "");
  for (const std::string& name : namesOf(ofLeft, ofRight)) {
    const Json::Value* const one = find(ofLeft, name);
    const Json::Value* const other = find(ofRight, name);
    const bool areBoth = one != nullptr && other != nullptr;
    if (!areBoth || textAt(*one, "version") != textAt(*other, "version")) {
      report.add({"plug-in " + name, shown(one, "version"), shown(other, "version")});
    } else {
      noteBuild("plug-in " + name, *one, *other, report);
    }
  }
}

void noteVersion(const char* key, const std::string& what, const Json::Value& left,
                 const Json::Value& right, DiffReport& report) {
  const std::string one = textAt(left, key);
  const std::string other = textAt(right, key);
  if (one != other) report.note(what + ": \"" + one + "\" and \"" + other + "\"");
}

}  // namespace

void diffOrigins(const Json::Value& left, const Json::Value& right, DiffReport& report) {
  noteVersion("version", "version of the program", left, right, report);
  noteVersion("library", "version of libvarrow", left, right, report);
  noteVersion("compiler", "compiler", left, right, report);
  noteBuild("program", left["program"], right["program"], report);
  const Files ofLeft = filesOf(left["libraries"], "");
  const Files ofRight = filesOf(right["libraries"], "");
  for (const auto& [name, library] : ofLeft) {
    const Json::Value* const other = find(ofRight, name);
    if (other != nullptr) noteBuild("library " + name, *library, *other, report);
  }
  diffInputs(left, right, report);
  diffPlugins(left, right, report);
}

}  // namespace libvarrow::host
