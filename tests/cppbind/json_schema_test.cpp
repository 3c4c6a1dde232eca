// The JSON Schema of descriptions, and its agreement with checking and reading.
#include "cppbind/JsonSchema.h"

#include "cppbind/classes.h"
#include "support/SchemaCheck.h"

namespace cppbind_test {

// Collects copies of `root`, each with one change at `node` or below.
void vary(Json::Value& root, Json::Value& node, std::vector<Json::Value>& variants) {
  static const Json::Value others = json(R"([null, true, -1, 0, 1.5, 2.0, 300, 1e30, "", "x", "EDD",
      [], [null], [1, 1], {}, {"a": 1}, {"a": [2.0]}, {"Wait": null}, {"Other": {}},
      {"Wait": {}, "Strict": {"limit": 1}}, {"Strict": {"limit": 3, "later": 4}}])");
  const Json::Value original = node;
  const auto add = [&] {
    variants.push_back(root);
    node = original;
  };
  for (const Json::Value& other : others) {
    node = other;
    add();
  }
  if (!node.isObject() && !node.isArray()) return;
  if (node.isObject()) {
    for (const std::string& key : original.getMemberNames()) {
      node.removeMember(key);
      add();
    }
    node["unknown"] = 1;
    add();
  }
  for (Json::Value& child : node) vary(root, child, variants);
}

// Checks and reads `document`: the error that reading throws must be among the faults. Returns
// whether there is none.
bool isReadable(const Json::Value& document, ClassRegister& reg) {
  const std::string text = Json::FastWriter().write(document);
  const Faults faults = check<Everything>(text, &reg);
  Everything everything;
  try {
    JsonDecodeBinder(&reg).decode(document, everything);
  } catch (const ParseErrorException& error) {
    std::set<std::string> found;
    for (const Fault& fault : faults.first) EXPECT_TRUE(found.insert(fault.what()).second) << text;
    EXPECT_EQ(1u, found.count(error.what())) << text << error.what();
    return false;
  }
  EXPECT_FALSE(faults.hasErrors()) << text << faults.first.at(0).text();
  return true;
}

TEST(JsonSchema, AgreesWithCheckingAndReading) {
  Json::Value whole = json(R"({"on": true, "count": 5, "large": 18446744073709551615, "share": 1.5,
      "noise": -1, "name": "n", "rule": "EDD", "day": "2024-03-05", "begin": "1999-12-31 23:59:59",
      "length": "25:59:59", "order": "EDD", "orders": ["due"], "sizes": {"a": [1]},
      "slots": {"a": {"machine": 3, "load": 0}}, "more": [{"machine": 1, "parts": [{"machine": 2}]}],
      "step": {"A/~ <list>": [60, 60]}, "spare": {"Wait": {}},
      "steps": [{"Wait": {"length": "02:00:00"}}, {"Group": {"steps": []}}]})");
  std::vector<Json::Value> documents = {whole};
  vary(whole, whole, documents);
  for (std::size_t i = 300; i < documents.size() && documents.size() < 2000; i += 300) {
    Json::Value changed = documents[i];
    vary(changed, changed, documents);
  }
  for (const char* day : {"2024-03-06", "2024-10-01", "2023-12-09", "2023-12-08", "2022-12-10"}) {
    documents.push_back(whole);
    documents.back()["day"] = day;
  }
  for (const char* begin : {"not-a-date-time", "+infinity", "-infinity"}) {
    documents.push_back(whole);
    documents.back()["begin"] = begin;
    documents.push_back(whole);
    documents.back()["length"] = begin;
  }
  Classes reg;
  const std::string schema = schemaText(jsonSchema(describe<Everything>(&reg)));
  const std::vector<bool> verdicts = validBySchema(schema, documents);
  std::size_t validCount = 0;
  for (std::size_t i = 0; i < documents.size(); ++i) {
    EXPECT_EQ(isReadable(documents[i], reg), verdicts[i]) << documents[i];
    validCount += verdicts[i];
  }
  EXPECT_LT(documents.size() / 20, validCount);
}

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
