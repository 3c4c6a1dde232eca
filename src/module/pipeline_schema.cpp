#include "libvarrow/module/pipeline_schema.h"

#include <algorithm>
#include <boost/shared_ptr.hpp>
#include <map>
#include <optional>
#include <vector>

#include "cppbind/cppbind.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

namespace {

using ModulePtr = boost::shared_ptr<Module>;

// The keys of all layouts.
struct PipelineFile {
  std::vector<ModulePtr> modules;
  std::optional<std::map<std::string, ModulePtr>> namedModules;
  std::optional<std::vector<std::string>> chain;
  ModulePtr mainModule;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->field("modules", modules).about("The modules in running order.");
    binder->field("named_modules", namedModules).about("Modules by name, for \"chained_module\".");
    binder->field("chained_module", chain)
        .about("Names of modules in running order. A name that occurs twice runs twice.");
    binder->field("mainModule", mainModule).about("The module to run.");
  }
};

Json::Value requiring(const char* key) {
  Json::Value schema;
  schema["required"].append(key);
  return schema;
}

// Returns the schema of a file with `key` and no others. `properties` are those of all layouts.
Json::Value strictLayout(const Json::Value& properties, const char* key) {
  Json::Value schema = requiring(key);
  schema["properties"]["$schema"] = properties["$schema"];
  schema["properties"][key] = properties[key];
  schema["additionalProperties"] = false;
  return schema;
}

Json::Value namedLayout(const Json::Value& properties) {
  Json::Value schema;
  for (const char* key : {"named_modules", "chained_module"}) {
    schema["properties"][key] = properties[key];
  }
  return schema;
}

Json::Value isNamedLayout() {
  Json::Value schema;
  schema["not"] = requiring("modules");
  schema["anyOf"].append(requiring("named_modules"));
  schema["anyOf"].append(requiring("chained_module"));
  return schema;
}

Json::Value isMainModuleLayout() {
  Json::Value schema = requiring("mainModule");
  schema["not"] = requiring("modules");
  return schema;
}

constexpr const char* kLayouts = R"(# Pipeline files

A pipeline file is a JSON file in one of three layouts. Each module is an object with one key, the
name of its class, whose value is an object with the keys of the class.

The modules in running order:

```json
{"modules": [{"ClassName": {"key": "value"}}, {"OtherClass": {}}]}
```

Modules with names, and the names in running order:

```json
{"named_modules": {"first": {"ClassName": {}}, "second": {"OtherClass": {}}},
 "chained_module": ["first", "second", "first"]}
```

One module:

```json
{"mainModule": {"ClassName": {"key": "value"}}}
```

)";

}  // namespace

Json::Value pipelineSchema(const cppbind::ClassRegisterBase& reg) {
  Json::Value schema = cppbind::jsonSchema(cppbind::describe<PipelineFile>(&reg));
  const Json::Value properties = schema["properties"];
  schema["title"] = "Pipeline";
  schema["properties"] = Json::Value(Json::objectValue);
  // Editors offer these keys; the layouts say what they hold.
  for (const std::string& key : properties.getMemberNames()) {
    const Json::Value& about = properties[key]["description"];
    schema["properties"][key] = Json::Value(Json::objectValue);
    if (!about.isNull()) schema["properties"][key]["description"] = about;
  }
  for (const char* key : {"required", "additionalProperties"}) schema.removeMember(key);
  schema["if"] = isNamedLayout();
  schema["then"] = namedLayout(properties);
  schema["else"]["if"] = isMainModuleLayout();
  schema["else"]["then"] = strictLayout(properties, "mainModule");
  schema["else"]["else"] = strictLayout(properties, "modules");
  return schema;
}

std::string pipelineReference(const cppbind::ClassRegisterBase& reg) {
  cppbind::Description description = cppbind::describe<PipelineFile>(&reg);
  // The file itself is explained by the examples.
  const auto isFile = [&](const cppbind::ObjectDescription& record) {
    return record.id == description.root.names.front();
  };
  auto& records = description.records;
  records.erase(std::find_if(records.begin(), records.end(), isFile));
  return kLayouts + cppbind::markdownReference(description);
}

}  // namespace libvarrow
