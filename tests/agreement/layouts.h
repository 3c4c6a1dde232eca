// Layouts of files with the classes in classes.h, and the result of loading such files.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "cppbind/Fault.h"

namespace agreement {

/// The form of a kind of files.
struct Layout {
  const char* name;
  const char* file;  // a valid file; OBJECTS are objects by class, OBJECT is one
  void (*load)(const Json::Value& file);
  cppbind::Faults (*check)(const std::string& text);
  Json::Value (*schema)();  // null: none
};
extern const std::vector<Layout> kLayouts;  // the last one has no schema

/// Returns `count` files of the layout with random changes. At least a third of them can be loaded.
std::vector<Json::Value> randomFiles(const Layout& layout, unsigned count);

/// The result of loading a file.
struct Outcome {
  enum Kind { Loaded, Threw, Ended } kind = Loaded;
  std::vector<std::string> path;  // of the exception
  std::string text;               // its message, or standard error of the process that ended
};
/// Loads the files in child processes, a new one after each file that ends its process. Writes into
/// the current directory.
std::vector<Outcome> outcomesOf(const Layout& layout, const std::vector<Json::Value>& files);

/// Returns true when the outcome is due to this fault.
bool explains(const cppbind::Fault& fault, const Outcome& outcome);

/// Returns the name of a class as it is registered, or `name`.
std::string registeredName(const std::string& name);

}  // namespace agreement
