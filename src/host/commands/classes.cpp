#include <cppbind/cppbind.h>
#include <json/value.h>

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <locale>
#include <ostream>
#include <set>

#include "base/nearest_name.h"
#include "host/commands/commands.h"
#include "host/commands/pipeline_options.h"
#include "host/json_string.h"
#include "libvarrow/json/json.h"
#include "libvarrow/module/pipeline_schema.h"
#include "libvarrow/xrule/rule_file_schema.h"

namespace libvarrow::host {

namespace {

using cppbind::Description;
using cppbind::ObjectDescription;

void addRecords(const cppbind::ValueDescription& value, std::set<std::string>& ids) {
  if (value.kind == cppbind::ValueKind::Record) ids.insert(value.names.begin(), value.names.end());
  for (const auto& element : value.elements) addRecords(element, ids);
}

void addRecords(const ObjectDescription& object, std::set<std::string>& ids) {
  for (const auto& field : object.fields) addRecords(field.value, ids);
  for (const auto& field : object.whole) addRecords(field.value, ids);
}

// Keeps one class and the records that it uses, directly or through others.
Description only(Description description, const std::string& id) {
  std::set<std::string> used;
  auto& classes = description.classes;
  classes.erase(std::remove_if(classes.begin(), classes.end(),
                               [&](const auto& object) { return object.id != id; }),
                classes.end());
  for (const ObjectDescription& object : classes) addRecords(object, used);
  for (std::size_t before = 0; before != used.size();) {
    before = used.size();
    for (const std::string& record : std::set<std::string>(used)) {
      addRecords(description.recordWithId(record), used);
    }
  }
  auto& records = description.records;
  records.erase(std::remove_if(records.begin(), records.end(),
                               [&](const auto& record) { return used.count(record.id) == 0; }),
                records.end());
  return description;
}

// The names of registered classes and their texts.
Json::Value listOf(const Description& description) {
  Json::Value list(Json::arrayValue);
  for (const ObjectDescription& object : description.classes) {
    Json::Value& entry = list.append(Json::Value(Json::objectValue));
    entry["class"] = object.name;
    entry["about"] = object.about;
    for (const auto& field : object.fields) entry["keys"].append(field.key);
  }
  return list;
}

class ClassesCommand : public Command {
 public:
  explicit ClassesCommand(HostState& state)
      : Command("classes", "prints the names that a file can use, and their keys"), state_(state) {}

  void declare(CommandOptions& options) override {
    options.addOptionalArgument("NAME", name_, "only this class of modules or rules");
    plugins_.declare(options);
  }

  int run(CommandContext& context) override {
    name_ = jsonString(name_).asString();  // names of classes are UTF-8
    plugins_.apply(state_);
    state_.loadPlugins();
    if (!name_.empty()) {
      printOne(context);
    } else if (context.wantsJson()) {
      Json::Value json(Json::objectValue);
      json["modules"] = listOf(cppbind::describe(*state_.modules));
      json["rules"] = listOf(cppbind::describe(*state_.rules));
      context.out() << Json2Str(json);
    } else {
      context.out() << programText(pipelineReference(*state_.modules));
      if (!state_.rules->empty())
        context.out() << '\n' << programText(ruleFileReference(*state_.rules));
    }
    return kDone;
  }

  bool needsClasses() const override { return true; }

 private:
  void printOne(CommandContext& context) const {
    base::NearestName nearest(name_);
    for (const auto* const reg : {state_.modules.get(), state_.rules.get()}) {
      for (const auto& [key, registered] : reg->classes()) {
        nearest.consider(registered.name);
        if (!boost::iequals(registered.name, name_, std::locale::classic())) continue;
        const Description all = cppbind::describe(*reg);
        const auto object =
            std::find_if(all.classes.begin(), all.classes.end(),
                         [&, &wanted = registered.name](const ObjectDescription& known) {
                           return known.name == wanted;
                         });
        const Description one = only(all, object->id);
        context.out() << (context.wantsJson() ? Json2Str(listOf(one))
                                              : programText(cppbind::markdownReference(one)));
        return;
      }
    }
    throw std::runtime_error(
        programText("no class is registered under " + name_ + base::suggestion(nearest.name())));
  }

  HostState& state_;
  std::string name_;
  PluginOption plugins_;
};

}  // namespace

std::unique_ptr<Command> classesCommand(HostState& state) {
  return std::make_unique<ClassesCommand>(state);
}

}  // namespace libvarrow::host
