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
  }
};

TEST(Describe, FaultsAreFoundInAllClasses) {
  ClassRegister reg;
  reg.regClass<Faulty>("Faulty");
  reg.regClass<Strict>("Strict");
  reg.regClass<Wait>("Wait");
  const std::vector<std::string> expected = {
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
      "Strict: incomplete: limit: not read",
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
  reg.regClass<Everything>("Everything");
  reg.regClass<Faulty>("Faulty");
  reg.regClass<Numbers>("List");
  reg.regClass<Strict>("Strict");
  reg.regClass<Object>("Other");
  reg.regClass("Own", boost::make_shared<OwnFactory>());
  const std::string expected = R"(## Classes

### Everything

| Key | Value | Default | Meaning |
|---|---|---|---|
| `on` | true or false | required |  |
| `count` | integer from 0 to 255 (at least 1, at most 9, at most 200) | `7` | How many. |
| `large` | integer from 0 | `7` |  |
| `share` | number (one of 0.1, 1.5, 300) | `0.1` |  |
| `noise` | number (at least -inf, at most 2.5) | required |  |
| `name` | text (not empty) or null | none |  |
| `rule` | text (one of "x", "EDD", "", one of "EDD", "") | required |  |
| `day` | date such as `"2024-03-05"` (at least "2023-12-09", at most "2024-03-05") | required |  |
| `begin` | time such as `"2024-03-05 07:08:09"` | required |  |
| `length` | duration such as `"26:05:03"` (at most "26:00:00") | `"25:00:00"` | Until the end. |
| `order` | one of `"FIFO"`, `"EDD"`, `"due"` (one of "EDD") or null | none |  |
| `orders` | list of one of `"FIFO"`, `"EDD"`, `"due"` | `["EDD"]` |  |
| `sizes` | object with any keys of set, as a list, of integer (at least 0) (not empty) (not empty) | required | Each: Each: Pieces. |
| `slots` | object with any keys of `cppbind_test::Slot` (few) | `{}` |  |
| `more` | list of `cppbind_test::Slot` or null | none |  |
| `step` | object of one of the classes `Everything`, `List`, `Strict` | required |  |
| `spare` | object of one of the classes `Everything`, `List`, `Strict` | none |  |
| `steps` | list of object of one of the classes `Everything`, `List`, `Strict` | `[]` |  |

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

### List

The value is: list of number (at most 180) (not empty)

### Other

It has no keys.

### Own

This description is incomplete: the factory does not describe its class


### Strict

Has a limit.

This description is incomplete: limit: not read

| Key | Value | Default | Meaning |
|---|---|---|---|
| `length` | duration such as `"26:05:03"` | `"01:00:00"` |  |
| `limit` | integer | required |  |

## Records

### cppbind_test::Odd

| Key | Value | Default | Meaning |
|---|---|---|---|
| `a\|b` | one of `"one"`, `"three"`, `"one"` | `"one"` |  |

### cppbind_test::Slot

A slot.

| Key | Value | Default | Meaning |
|---|---|---|---|
| `machine` | integer | required | A "machine" é. |
| `load` | number | `0.5` |  |
| `parts` | list of `cppbind_test::Slot` | `[]` |  |
)";
  testing::internal::CaptureStdout();
  EXPECT_EQ(expected, markdownReference(describe(reg)));
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
  EXPECT_EQ(expected, markdownReference(describe(reg)));
  EXPECT_EQ("cppbind_test::Numbers", describe(reg).classWithId("List").typeName);
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
    if (own.empty()) own.regClass<Strict>("Strict");
    binder->bind("others", others, nullptr, &own);
    const auto scope = binder->implementation()->replaceClassRegister(&own);
    binder->bind("step", step);
  }
};

TEST(Describe, ClassesOfSeveralRegistersHaveDifferentIds) {
  ClassRegister reg;
  reg.regClass<Wait>("Strict");
  const Description description = describe<Mixed>(&reg);
  const ObjectDescription& mixed = description.recordWithId("cppbind_test::Mixed");
  EXPECT_EQ("Strict", mixed.field("others")->value.elements.at(0).names.at(0));
  EXPECT_EQ("Strict (2)", mixed.field("step")->value.names.at(0));
  EXPECT_EQ("Strict", description.classWithId("Strict (2)").name);
  EXPECT_THROW(description.classWithId("Strict (3)"), std::out_of_range);
}

TEST(Describe, AFieldIsCheckedAsItWouldBeRead) {
  Classes reg;
  Description description = describe(reg);
  const ObjectDescription everything = description.classWithId("Everything");
  description = Description();  // copies are complete
  JsonDecodeBinder decoder(&reg);
  const auto faultIn = [&](const char* key, const char* text) {
    return errorOf([&] { EXPECT_TRUE(everything.field(key)->check(decoder, json(text)[0])); });
  };
  EXPECT_EQ("no error", faultIn("count", "[9]"));
  EXPECT_EQ("0 is less than 1", faultIn("count", "[0]"));
  EXPECT_EQ("value out of unsigned char range", faultIn("count", "[256]"));
  EXPECT_EQ("b[1]: -1 is less than 0", faultIn("sizes", R"([{"a": [1], "b": [2, -1]}])"));
  EXPECT_EQ("a.machine: not found", faultIn("slots", R"([{"a": {}}])"));
  EXPECT_EQ("no error", faultIn("name", "[null]"));
  EXPECT_EQ("not found", faultIn("day", "[null]"));
  EXPECT_EQ("Other miss register", faultIn("step", R"([{"Other": {}}])"));
}

}  // namespace cppbind_test
