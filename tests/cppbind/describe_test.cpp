// Descriptions of types and registers.
#include "cppbind/Description.h"

#include <boost/date_time/posix_time/posix_time.hpp>
#include <map>
#include <optional>
#include <set>

#include "cppbind/cppbind.h"
#include "support/support.h"

namespace describe_test {

using namespace cppbind;
using boost::gregorian::date;
using namespace boost::posix_time;
using namespace test_support;

enum class Order { fifo, edd };
constexpr auto enumNames(Order) {
  return names<Order>({{Order::fifo, "FIFO"}, {Order::edd, "EDD"}});
}

struct Unknown {};

struct Step : Object {};
using StepPtr = boost::shared_ptr<Step>;

// A record that contains itself.
struct Slot {
  int machine = 3;
  std::vector<Slot> parts;
  void setBind(Binder* binder, bool) {
    binder->about("A slot.");
    binder->bind("machine", machine);
    binder->bind("parts", parts, {});
  }
};

struct Everything : Step {
  bool on = false;
  unsigned char count = 0;
  double share = 0;
  std::optional<std::string> name;
  ptime begin;
  date day;
  time_duration length;
  Order order = Order::fifo;
  std::vector<std::set<int>> sizes;
  std::map<std::string, Slot> slots;
  Unknown unknown;
  StepPtr step;

  void setBind(Binder* binder, bool) {
    binder->bind("on", on, true);
    binder->field("count", count, 7).between(1, 9).about("early").about("How many.");
    binder->field("share", share, 0.1).oneOf({0.1, 0.5});
    binder->field("name", name).notEmpty();
    binder->bind("begin", begin);
    binder->field("day", day).atLeast(date(2024, 3, 5));
    binder->bind("length", length, hours(30));
    binder->bind("order", order, Order::edd);
    binder->field("sizes", sizes, {{1}}).each().each().atLeast(1).about("Pieces.");
    binder->field("slots", slots).satisfies([](const auto& m) { return m.size() < 9; }, "few");
    binder->bind("unknown", unknown);
    // Not created by name: it has no JSON form.
    binder->bind("step", step, boost::make_shared<Everything>());
  }
};

// Virtual bases are found, too.
struct Group : virtual Step {
  struct Data4Bind {
    std::vector<StepPtr> steps;
    void setBind(Binder* binder, bool) { binder->bind("steps", steps); }
  };
  explicit Group(const Data4Bind&) {}
  Data4Bind getData4Bind() const { return {}; }
};

struct Base : Step {
  void setBind(Binder* binder, bool) { binder->about("The base."); }
};
struct Strict : Base {
  int limit = 0;
  void setBind(Binder* binder, bool bindFields) {
    Base::setBind(binder, bindFields);
    binder->about("The strict one.");
    binder->bind("limit", limit);
    EXPECT_TRUE(binder->isReading() && binder->isDescribing());
    if (limit < 1) throw ParseErrorException("limit", "0 is too small");
    binder->bind("later", limit);
  }
};

struct Numbers : Object {
  std::vector<int> numbers;
  void setBind(Binder* binder, bool) { binder->field(numbers).each().atMost(9); }
};

class OwnFactory : public ObjFactory {
  Object* create(const std::string&, const Json::Value&, BinderImpBase*) override {
    return new Object;
  }
  std::string typeName() const override { return "own"; }
};

struct Classes : ClassRegister {
  Classes() {
    regClass<Strict>("strict");
    regClass<Everything>("Everything");
    regClass<Group>("Group");
    regClass<Numbers>("Numbers");
    regClass("Own", boost::make_shared<OwnFactory>());
  }
};

// A line for each value, so that a whole description is one text.
std::string textOf(const ValueDescription& value) {
  static const char* const kinds[] = {"any",  "bool", "int",    "number",   "text",
                                      "date", "time", "span",   "one name", "list",
                                      "set",  "map",  "record", "object"};
  std::string text = kinds[static_cast<int>(value.kind)];
  if (value.isNullable) text += "?";
  if (value.kind == ValueKind::Integer) {
    text += " " + value.minimum.asString() + ".." + value.maximum.asString();
  }
  for (const std::string& name : value.names) text += " " + name;
  for (const Constraint& constraint : value.constraints) {
    text += " (" + constraint.violation("V") + ")";
  }
  if (!value.about.empty()) text += " # " + value.about;
  for (const ValueDescription& element : value.elements) text += " of " + textOf(element);
  return text;
}

std::string textOf(const ObjectDescription& object) {
  std::string text = object.id + " # " + object.about + "\n";
  for (const FieldDescription& field : object.fields) {
    text += "  " + field.key + (field.isRequired ? "!" : "") + " " + textOf(field.value);
    if (field.defaultValue) text += " = " + Json::FastWriter().write(*field.defaultValue);
    if (text.back() != '\n') text += "\n";
  }
  for (const FieldDescription& field : object.whole)
    text += "  whole " + textOf(field.value) + "\n";
  if (!object.isComplete()) text += "  " + object.incompleteBecause + "\n";
  return text;
}

std::string textOf(const Description& description) {
  std::string text = textOf(description.root) + "\n";
  for (const ObjectDescription& object : description.classes) text += textOf(object);
  for (const ObjectDescription& record : description.records) text += textOf(record);
  return text;
}

TEST(Describe, ARegisterIsDescribedWithoutReading) {
  const Classes reg;
  const std::string expected = R"(object Everything Group Numbers Own strict
Everything # 
  on bool = true
  count int 0..255 ("V" is less than 1) ("V" is more than 9) # How many. = 7
  share number ("V" is not one of 0.1, 0.5) = 0.10000000000000001
  name text? (is empty)
  begin! time
  day! date ("V" is less than "2024-03-05")
  length span = "30:00:00"
  order one name FIFO EDD = "EDD"
  sizes list of set of int -2147483648..2147483647 ("V" is less than 1) # Pieces. = [[1]]
  slots! map (few) of record describe_test::Slot
  unknown! any
  step object Everything Group strict
Group # 
  steps! list of object Everything Group strict
Numbers # 
  whole list of int -2147483648..2147483647 ("V" is more than 9)
Own # 
  the factory does not describe its class
strict # The strict one.
  limit! int -2147483648..2147483647
  limit: 0 is too small
describe_test::Slot # A slot.
  machine! int -2147483648..2147483647
  parts list of record describe_test::Slot = []
)";
  testing::internal::CaptureStdout();
  EXPECT_EQ(expected, textOf(describe(reg)));
  EXPECT_EQ("", testing::internal::GetCapturedStdout());
  EXPECT_EQ(expected, textOf(describe(reg)));
  EXPECT_EQ("describe_test::Group", describe(reg).classWithId("Group").typeName);
}

struct Upper : StringConverter {
  std::string toString(const boost::any&) const override { return "DAY"; }
  boost::any fromString(const std::string&) const override { return date(); }
};

TEST(Describe, ATypeIsDescribedWithTheConvertersOfItsBinder) {
  EXPECT_EQ("list of date\n", textOf(describe<std::vector<date>>()));
  JsonDecodeBinder binder;
  binder.setConverter(typeid(date), boost::make_shared<Upper>());
  EXPECT_EQ("list of text\n", textOf(describe<std::vector<date>>(nullptr, binder.converters())));
  EXPECT_EQ("object\n", textOf(describe<StepPtr>()));
}

// A setBind that uses another register for one of its fields.
struct Mixed {
  StepPtr step;
  std::vector<boost::shared_ptr<Object>> others;
  const ClassRegisterBase* reg = nullptr;
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
  reg.regClass<Base>("Strict");
  const Description description = describe<Mixed>(&reg);
  const ObjectDescription& mixed = description.recordWithId("describe_test::Mixed");
  EXPECT_EQ("list of object Strict", textOf(mixed.field("others")->value));
  EXPECT_EQ("object Strict (2)", textOf(mixed.field("step")->value));
  EXPECT_EQ("Strict", description.classWithId("Strict (2)").name);
  EXPECT_THROW(description.classWithId("Strict (3)"), std::out_of_range);
}

TEST(Describe, AFieldIsCheckedAsItWouldBeRead) {
  const Classes reg;
  Classes registers;
  Description description = describe(reg);
  const ObjectDescription everything = description.classWithId("Everything");
  description = Description();  // copies are complete
  JsonDecodeBinder decoder(&registers);
  const auto faultIn = [&](const char* key, const char* text) {
    return errorOf([&] { EXPECT_TRUE(everything.field(key)->check(decoder, json(text)[0])); });
  };
  EXPECT_EQ("no error", faultIn("count", "[9]"));
  EXPECT_EQ("0 is less than 1", faultIn("count", "[0]"));
  EXPECT_EQ("value out of unsigned char range", faultIn("count", "[256]"));
  EXPECT_EQ("[1][1]: 0 is less than 1", faultIn("sizes", "[[[1], [2, 0]]]"));
  EXPECT_EQ("a.machine: not found", faultIn("slots", R"([{"a": {}}])"));
  EXPECT_EQ("no error", faultIn("name", "[null]"));
  EXPECT_EQ("not found", faultIn("day", "[null]"));
  EXPECT_EQ("Numbers miss register", faultIn("step", R"([{"Numbers": [1]}])"));
}

}  // namespace describe_test
