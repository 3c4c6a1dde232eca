#include "libvarrow/xrule/rule_file_schema.h"

#include <limits>

#include "cppbind/cppbind.h"
#include "libvarrow/xrule/Rule.h"

namespace libvarrow {

namespace {

cppbind::Description describeRules(const cppbind::ClassRegisterBase& reg) {
  return cppbind::detail::describeObjects(reg, &cppbind::detail::creates<Rule>);
}

Json::Value levelSchema() {
  Json::Value schema;
  schema["type"] = "integer";
  schema["minimum"] = std::numeric_limits<int>::min();
  schema["maximum"] = std::numeric_limits<int>::max();
  schema["description"] =
      "The level of the rules in this group. By default that of the group around.";
  return schema;
}

constexpr const char* kLayout = R"(# Rule files

A rule file is a JSON file with a group of rules, or a list of groups. A group is an object: its keys
are the names of rule classes, and their values are objects with the keys of the class. `rule_level`
is the level of the group's rules, and `rule_list` holds further groups. To use a class twice, put it
into two groups.

```json
{
  "rule_level": 2,
  "ClassName": {"key": "value"},
  "rule_list": [{"ClassName": {"key": "other value"}}]
}
```

)";

}  // namespace

Json::Value ruleFileSchema(const cppbind::ClassRegisterBase& reg) {
  const Json::Value rules = cppbind::jsonSchema(describeRules(reg));
  Json::Value groups;
  groups["type"] = "array";
  groups["items"]["$ref"] = "#/definitions/group";
  Json::Value group;
  group["type"] = "object";
  group["additionalProperties"] = false;
  // The definition of an object of any rule class has a property for each.
  group["properties"] = rules["definitions"]["object.1"]["properties"];
  group["properties"]["rule_level"] = levelSchema();
  group["properties"]["rule_list"] = groups;

  Json::Value schema = group;
  schema["$schema"] = rules["$schema"];
  schema["title"] = "Rules";
  schema["properties"]["$schema"]["type"] = "string";
  schema["type"] = Json::Value(Json::arrayValue);
  for (const char* type : {"object", "array", "null"}) schema["type"].append(type);
  schema["items"] = groups["items"];
  schema["definitions"] = rules["definitions"];
  schema["definitions"]["group"] = group;
  return schema;
}

std::string ruleFileReference(const cppbind::ClassRegisterBase& reg) {
  return kLayout + cppbind::markdownReference(describeRules(reg));
}

}  // namespace libvarrow
