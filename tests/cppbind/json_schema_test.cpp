// The texts of JSON Schemas. tests/agreement compares schemas with checking and loading.
#include "cppbind/JsonSchema.h"

#include "cppbind/classes.h"

namespace cppbind_test {

TEST(JsonSchema, DocumentsForPeople) {
  const Classes reg;
  const Json::Value schema = jsonSchema(describe<Everything>(&reg));
  Json::Value share = schema["properties"]["share"];
  for (const char* limit : {"minimum", "maximum"}) share.removeMember(limit);
  EXPECT_EQ(
      json(R"({"type": ["number", "null"], "enum": [0.1, 1.5, 300.0, null], "default": 0.1})"),
      share);
  EXPECT_TRUE(contains(schemaText(schema), "\"default\": 0.1"));
  const Json::Value& machine =
      schema["definitions"]["record.cppbind_test::Slot"]["properties"]["machine"];
  EXPECT_EQ("A \"machine\"\n\xC3\xA9.", machine["description"].asString());
  EXPECT_TRUE(contains(schemaText(schema), "\"A \\\"machine\\\"\\n\xC3\xA9.\""));
  EXPECT_EQ("Until the end.\nCondition: at most \"26:00:00\"",
            schema["properties"]["length"]["description"].asString());
}

}  // namespace cppbind_test
