// Descriptions of types and registers, their reference in Markdown, and the faults in them.
#include "cppbind/Description.h"

#include "cppbind/classes.h"

namespace cppbind_test {

struct Unknown {};

enum Old { kOne = 1, kTwo, kThree, kFour };
constexpr auto enumNames(Old) {
  return names<Old>({{kOne, "one"}, {kThree, "three"}, {kFour, "one"}});
}

struct Odd {
  Old old = kOne;
  void setBind(Binder* binder, bool) { binder->bind("a|b", old, kOne); }
};

struct Faulty : Object {
  int number = 0;
  double share = 0;
  std::string rule;
  Order order = Order::fifo;
  date day;
  time_duration length;
  std::set<unsigned char> sizes;
  Odd odd;
  Unknown unknown;
  StepPtr spare;

  void setBind(Binder* binder, bool) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    binder->about("# All <is>\nwrong.");
    binder->field("low", number, 0).atLeast(1).about("As <low>\nas possible.");
    binder->field("high", number).atLeast(5).atMost(1);
    binder->field("nan", share).atMost(nan);
    binder->field("rule", rule).oneOf(std::vector<std::string>());
    binder->field("none", rule).oneOf({"", "b"}).notEmpty().atLeast("c");
    binder->field("day", day).atMost(date(2024, 3, 4)).oneOf({});
    binder->field("length", length).between(-hours(26), hours(100));
    binder->bind("order", order, Order::spt);
    binder->field("sizes", sizes, {1, 3}).each().satisfies([](int n) { return n < 3; }, "below 3");
    binder->bind("odd", odd);
    binder->bind("unknown", unknown);
    binder->bind("spare", spare, boost::make_shared<Wait>());
  }
};

TEST(Describe, FaultsAreFoundInAllClasses) {
  ClassRegister reg;
  reg.regClass<Faulty>("Faulty");
  reg.regClass<agreement::Closed<Step>>("Closed");
  const std::vector<std::string> expected = {
      "Closed: incomplete: no limit",
      "Faulty.low: default 0: 0 is less than 1",
      "Faulty.high: no value is at least 5, at most 1",
      "Faulty.nan: no value is at most NaN",
      "Faulty.rule: no value is allowed",
      "Faulty.none: no value is one of \"\", \"b\", not empty, at least \"c\"",
      "Faulty.day: no value is allowed",
      "Faulty.order: lifo has no name",
      "Faulty.order: spt has no name",
      "Faulty.order: default: the value 2 has no name",
      "Faulty.sizes: default [1, 3]: [1]: below 3",
      "cppbind_test::Odd.a|b: kTwo has no name",
      "cppbind_test::Odd.a|b: several values have the name \"one\""};
  EXPECT_EQ(expected, descriptionFaults(reg));
}

class OwnFactory : public ObjFactory {
  Object* create(const std::string&, const Json::Value&, BinderImpBase*) override {
    return new Object;
  }
  std::string typeName() const override { return "own"; }
};

TEST(Describe, ARegisterIsDescribedWithoutReading) {
  ClassRegister reg;
  reg.regClass<agreement::Numbers<Step>>("Numbers");
  reg.regClass<agreement::Lists<Step>>("Lists");
  reg.regClass<agreement::Chain<Step>>("Chain");
  reg.regClass<Faulty>("Faulty");
  reg.regClass<agreement::Whole<Step>>("Whole");
  reg.regClass<agreement::Closed<Step>>("Closed");
  reg.regClass<Object>("Other");
  reg.regClass("Own", boost::make_shared<OwnFactory>());
  const std::string expected = R"(## Classes

### Chain

| Key | Value | Default | Meaning |
|---|---|---|---|
| `modules` | list of object of one of the classes `Chain`, `Closed`, `Lists`, `Numbers`, `Whole` | `[]` |  |
| `spare` | object of one of the classes `Chain`, `Closed`, `Lists`, `Numbers`, `Whole` | `null` |  |
| `any` | object of any class or null | none |  |
| `named` | object with any keys of object of one of the classes `Chain`, `Closed`, `Lists`, `Numbers`, `Whole` | `{}` |  |

### Closed

This description is incomplete: no limit

| Key | Value | Default | Meaning |
|---|---|---|---|
| `limit` | integer | required |  |

### Faulty

\# All &lt;is> wrong.

| Key | Value | Default | Meaning |
|---|---|---|---|
| `low` | integer (at least 1) | `0` | As &lt;low> as possible. |
| `high` | integer (at least 5, at most 1) | required |  |
| `nan` | number (at most NaN) | required |  |
| `rule` | text (no value is allowed) | required |  |
| `none` | text (one of "", "b", not empty, at least "c") | required |  |
| `day` | date such as `"2024-03-05"` (at most "2024-03-04", no value is allowed) | required |  |
| `length` | duration such as `"26:05:03"` (at least "-26:00:00", at most "100:00:00") | required |  |
| `order` | one of `"FIFO"`, `"EDD"`, `"due"` | none |  |
| `sizes` | set, as a list, of integer from 0 to 255 (below 3) | `[1, 3]` |  |
| `odd` | `cppbind_test::Odd` | required |  |
| `unknown` | any value | required |  |
| `spare` | object of one of the classes `Chain`, `Closed`, `Lists`, `Numbers`, `Whole` | none |  |

### Lists

| Key | Value | Default | Meaning |
|---|---|---|---|
| `sizes` | list of integer (at least 1, at most 5) (not empty) | required | Boxes. Each: Pieces. |
| `matrix` | list of list of integer (at least 0) (not empty) | `[]` |  |
| `weights` | object with any keys of number (at least 0, at most 1) (not empty) | `{}` |  |
| `pair` | list of integer (one of [1, 2], [2, 1]) | `[]` |  |
| `groups` | object with any keys of set, as a list, of integer | `{}` |  |

### Numbers

Numbers.

| Key | Value | Default | Meaning |
|---|---|---|---|
| `on` | true or false | `true` |  |
| `tiny` | integer from -128 to 127 | `1` |  |
| `tries` | integer (at least 1, at most 9, at most 300) | required | A "text" é. |
| `even` | integer (must be even) | `1` |  |
| `count` | integer from 0 to 65535 | `1` |  |
| `large` | integer | `1` |  |
| `huge` | integer from 0 (at least 1) | `1` |  |
| `share` | number (at least 0.1, at most 0.3) | `0.5` |  |
| `level` | number (one of 0.1, 1.5, 300) | `0.1` |  |
| `noise` | number (at least -inf, at most 2.5) | `0` |  |
| `limit` | integer from 0 (at most 1000) or null | none |  |

### Other

It has no keys.

### Own

This description is incomplete: the factory does not describe its class


### Whole

The value is: list of number (at most 180) (not empty)

## Records

### cppbind_test::Odd

| Key | Value | Default | Meaning |
|---|---|---|---|
| `a\|b` | one of `"one"`, `"three"`, `"one"` | `"one"` |  |
)";
  testing::internal::CaptureStdout();
  EXPECT_EQ(expected, markdownReference(describe(reg)));
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
  EXPECT_EQ(expected, markdownReference(describe(reg)));
  EXPECT_EQ("cppbind_test::Faulty", describe(reg).classWithId("Faulty").typeName);
}

struct Upper : StringConverter {
  std::string toString(const boost::any&) const override { return "DAY"; }
  boost::any fromString(const std::string&) const override { return date(); }
};

TEST(Describe, ATypeIsDescribedWithTheConvertersOfItsBinder) {
  using Days = std::vector<date>;
  JsonDecodeBinder binder;
  binder.setConverter(typeid(date), boost::make_shared<Upper>());
  EXPECT_EQ(ValueKind::Date, describe<Days>().root.elements.at(0).kind);
  EXPECT_EQ(ValueKind::Text, describe<Days>(nullptr, binder.converters()).root.elements.at(0).kind);
  EXPECT_EQ(std::vector<std::string>(), describe<StepPtr>().root.names);
}

// A setBind that uses another register for one of its fields.
struct Mixed {
  StepPtr step;
  std::vector<boost::shared_ptr<Object>> others;
  void setBind(Binder* binder, bool) {
    static ClassRegister own;
    if (own.empty()) own.regClass<agreement::Closed<Step>>("Wait");
    binder->bind("others", others, nullptr, &own);
    const auto scope = binder->implementation()->replaceClassRegister(&own);
    binder->bind("step", step);
  }
};

TEST(Describe, ClassesOfSeveralRegistersHaveDifferentIds) {
  ClassRegister reg;
  reg.regClass<Wait>("Wait");
  const Description description = describe<Mixed>(&reg);
  const ObjectDescription& mixed = description.recordWithId("cppbind_test::Mixed");
  EXPECT_EQ("Wait", mixed.field("others")->value.elements.at(0).names.at(0));
  EXPECT_EQ("Wait (2)", mixed.field("step")->value.names.at(0));
  EXPECT_EQ("Wait", description.classWithId("Wait (2)").name);
  EXPECT_THROW(description.classWithId("Wait (3)"), std::out_of_range);
}

TEST(Describe, AFieldIsCheckedAsItWouldBeRead) {
  Description description = describe<agreement::Lists<Step>>();
  const ObjectDescription lists = description.records.at(0);
  description = Description();  // copies are complete
  JsonDecodeBinder decoder;
  const auto faultIn = [&](const char* key, const char* text) {
    return errorOf([&] { EXPECT_TRUE(lists.field(key)->check(decoder, json(text)[0])); });
  };
  EXPECT_EQ("no error", faultIn("sizes", "[[1]]"));
  EXPECT_EQ("[1]: not found", faultIn("sizes", "[[0, null]]"));
  EXPECT_EQ("[0]: 0 is less than 1", faultIn("sizes", "[[0]]"));
  EXPECT_EQ("not found", faultIn("sizes", "[null]"));
}

TEST(Describe, ASchemaHasTheTextsAndDefaults) {
  const Json::Value schema = jsonSchema(describe<agreement::Numbers<Step>>());
  Json::Value level = schema["properties"]["level"];
  for (const char* limit : {"minimum", "maximum"}) level.removeMember(limit);
  EXPECT_EQ(
      json(R"({"type": ["number", "null"], "enum": [0.1, 1.5, 300.0, null], "default": 0.1})"),
      level);
  EXPECT_TRUE(contains(schemaText(schema), "\"default\": 0.1"));
  EXPECT_TRUE(contains(schemaText(schema), "\"A \\\"text\\\"\\n\xC3\xA9.\""));
  // Bounds of 2.5 and 3.5 seconds.
  const std::string times = schemaText(jsonSchema(describe<agreement::Times<Step>>()));
  EXPECT_TRUE(contains(times, "\"Condition: at most \\\"26:00:00\\\"\""));
  EXPECT_TRUE(contains(times, "^(00:00:03|[1-9]"));
  EXPECT_TRUE(contains(times, "^(00:00:03|00:00:0[0-2]|-)"));
}

}  // namespace cppbind_test
