// The JSON Schema of descriptions agrees with reading.
#include "cppbind/JsonSchema.h"

#include <boost/date_time/posix_time/posix_time.hpp>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "cppbind/cppbind.h"
#include "support/SchemaCheck.h"
#include "support/support.h"

namespace json_schema_test {

using namespace cppbind;
using boost::gregorian::date;
using namespace boost::posix_time;
using namespace test_support;

enum class Order { fifo, edd };
constexpr auto enumNames(Order) {
  return names<Order>({{Order::fifo, "FIFO"}, {Order::edd, "EDD"}});
}

// A record that contains itself.
struct Slot {
  int machine = 3;
  std::vector<Slot> parts;
  void setBind(Binder* binder, bool) {
    binder->field("machine", machine).about("A \"machine\"\n\xC3\xA9.");
    binder->bind("parts", parts, {});
  }
};

struct Shape : Object {};
struct Circle : Shape {
  void setBind(Binder* binder, bool) { binder->bind("radius", radius, 1.0); }
  double radius = 0;
};
struct Polygon : Shape {
  void setBind(Binder* binder, bool) { binder->field(angles).notEmpty().each().atMost(180); }
  std::vector<float> angles;
};
// Its description ends before the last key.
struct Strict : Shape {
  void setBind(Binder* binder, bool) {
    binder->bind("limit", limit);
    if (limit < 1) throw ParseErrorException("limit", "too small");
    binder->bind("later", limit);
  }
  int limit = 0;
};

struct All {
  bool on = false;
  short small = 0;
  std::uint64_t large = 0;
  float share = 0;
  double noise = 0;
  std::optional<std::string> name;
  date day;
  ptime begin;
  time_duration length;
  std::optional<Order> order;
  std::string rule;
  std::map<std::string, std::set<int>> sizes;
  std::optional<std::vector<Slot>> slots;
  boost::shared_ptr<Shape> shape;
  std::vector<boost::shared_ptr<Shape>> shapes;

  void setBind(Binder* binder, bool) {
    const Json::Value noShapes(Json::arrayValue);
    const double infinity = std::numeric_limits<double>::infinity();
    binder->bind("on", on);
    binder->field("small", small).atLeast(1).atMost(9).atMost(300);
    binder->bind("large", large, 7);
    binder->field("share", share, 0.1f).oneOf({0.1f, 1.5f, 300.0f});
    binder->field("noise", noise).between(-infinity, 2.5);
    binder->field("name", name).notEmpty();
    binder->field("day", day).between(date(2023, 12, 9), date(2024, 3, 5));
    binder->bind("begin", begin);
    binder->field("length", length).atMost(hours(26)).about("Until the end.");
    binder->field("order", order).oneOf({Order::edd});
    binder->field("rule", rule).oneOf({"x", "EDD", ""}).oneOf({"EDD", ""});
    binder->field("sizes", sizes).notEmpty().each().notEmpty().each().atLeast(0);
    binder->bind("slots", slots);
    binder->bind("shape", shape);
    binder->bind("shapes", shapes, &noShapes);
  }
};

struct Classes : ClassRegister {
  Classes() {
    regClass<Circle>("Circle");
    regClass<Polygon>("A/~ <polygon>");
    regClass<Strict>("Strict");
    regClass<Object>("Other");
  }
};

// Collects copies of `root`, each with one change at `node` or below.
void vary(Json::Value& root, Json::Value& node, std::vector<Json::Value>& variants) {
  static const Json::Value others = json(R"([null, true, -1, 0, 1.5, 2.0, 300, 1e30, "", "x", "EDD",
      [], [null], [1, 1], {}, {"a": 1}, {"a": [2.0]}, {"Circle": null}, {"Other": {}},
      {"Circle": {}, "Strict": {"limit": 1}}, {"Strict": {"limit": 3, "later": 4}}])");
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

TEST(JsonSchema, AgreesWithReading) {
  Json::Value whole = json(R"({"on": true, "small": 5, "large": 18446744073709551615, "share": 1.5,
      "noise": -1, "name": "n", "day": "2024-03-05", "begin": "1999-12-31 23:59:59",
      "length": "25:59:59", "order": "EDD", "rule": "EDD", "sizes": {"a": [1]},
      "slots": [{"machine": 1, "parts": [{"machine": 2}]}], "shape": {"A/~ <polygon>": [60, 60]},
      "shapes": [{"Circle": {"radius": 2}}]})");
  std::vector<Json::Value> documents = {whole};
  vary(whole, whole, documents);
  for (const char* day : {"2024-03-06", "2024-10-01", "2023-12-09", "2023-12-08", "2022-12-10"}) {
    documents.push_back(whole);
    documents.back()["day"] = day;
  }
  Classes reg;
  const std::string schema = schemaText(jsonSchema(describe<All>(&reg)));
  EXPECT_EQ(schema, schemaText(jsonSchema(describe<All>(&reg))));
  const std::vector<bool> verdicts = validBySchema(schema, documents);
  std::size_t validCount = 0;
  for (std::size_t i = 0; i < documents.size(); ++i) {
    All all;
    const std::string error = errorOf([&] { JsonDecodeBinder(&reg).decode(documents[i], all); });
    EXPECT_EQ(error == "no error", verdicts[i]) << documents[i] << error;
    validCount += verdicts[i];
  }
  EXPECT_LT(documents.size() / 10, validCount);
}

TEST(JsonSchema, DocumentsForPeople) {
  const Classes reg;
  const Json::Value schema = jsonSchema(describe<All>(&reg));
  Json::Value share = schema["properties"]["share"];
  for (const char* limit : {"minimum", "maximum"}) share.removeMember(limit);
  EXPECT_EQ(
      json(R"({"type": ["number", "null"], "enum": [0.1, 1.5, 300.0, null], "default": 0.1})"),
      share);
  EXPECT_TRUE(contains(schemaText(schema), "\"default\": 0.1"));
  const Json::Value& machine =
      schema["definitions"]["record.json_schema_test::Slot"]["properties"]["machine"];
  EXPECT_EQ("A \"machine\"\n\xC3\xA9.", machine["description"].asString());
  EXPECT_TRUE(contains(schemaText(schema), "\"A \\\"machine\\\"\\n\xC3\xA9.\""));
  EXPECT_EQ("Until the end.\nCondition: at most \"26:00:00\"",
            schema["properties"]["length"]["description"].asString());
}

}  // namespace json_schema_test
