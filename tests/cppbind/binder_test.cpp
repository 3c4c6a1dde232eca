// JSON to objects and back.
#include "cppbind/imp/binder.h"

#include <gtest/gtest.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/make_shared.hpp>
#include <clocale>
#include <csignal>
#include <locale>

#include "cppbind/ClassRegister.h"
#include "cppbind/cppbind.h"
#include "support/ChildProcess.h"
#include "support/TemporaryDirectory.h"
#include "support/json.h"

namespace cppbind_test {

using namespace cppbind;
using boost::gregorian::date;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using boost::posix_time::time_from_string;
using test_support::json;

struct Slot {
  int machine = 0;
  double load = 0;
  void setBind(Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("machine", machine);
    binder->bind("load", load, 0.5);
  }
};

struct Step : Object {};

struct Wait : Step {
  time_duration length;
  void setBind(Binder* binder, bool) { binder->bind("length", length); }
};

struct Group : Step {
  std::vector<boost::shared_ptr<Step>> steps;
  void setBind(Binder* binder, bool) { binder->bind("steps", steps); }
};

struct Plan {
  bool active = false;
  short level = 0;
  unsigned short port = 0;
  int count = 0;
  unsigned int size = 0;
  long distance = 0;
  unsigned long long total = 0;
  float weight = 0;
  double cost = 0;
  std::string name;
  date day;
  ptime start;
  time_duration length;
  boost::shared_ptr<std::string> shift;
  std::vector<int> numbers;
  std::vector<bool> flags;
  std::vector<ptime> times;
  std::vector<Slot> slots;
  Slot main;
  boost::shared_ptr<Step> step;
  std::vector<boost::shared_ptr<Step>> steps;

  void setBind(Binder* b, bool bindFields) {
    if (!bindFields) return;
    b->bind("active", active);
    b->bind("level", level);
    b->bind("port", port);
    b->bind("count", count);
    b->bind("size", size);
    b->bind("distance", distance);
    b->bind("total", total);
    b->bind("weight", weight);
    b->bind("cost", cost);
    b->bind("name", name);
    b->bind("day", day);
    b->bind("start", start);
    b->bind("length", length);
    b->bind("shift", shift);
    b->bind("numbers", numbers);
    b->bind("flags", flags);
    b->bind("times", times);
    b->bind("slots", slots);
    b->bind("main", main);
    b->bind("step", step);
    b->bind("steps", steps);
  }
};

const char* const kPlan = R"({
  "active": true, "level": -3, "port": 65535, "count": -7, "size": 4000000000,
  "distance": -9000000000, "total": 18446744073709551615, "weight": 0.5, "cost": 2, "name": "a\u0000b",
  "day": "2024-02-29", "start": "2024-03-05 07:08:09", "length": "26:05:03", "shift": "night",
  "numbers": [1, 2], "flags": [true, false], "times": ["2024-03-05 00:00:00"],
  "slots": [{"machine": 1, "load": 0.25}, {"machine": 2}], "main": {"machine": 3, "load": 1.5},
  "step": {"Wait": {"length": "00:10:00"}},
  "steps": [{"group": {"steps": [{"WAIT": {"length": "01:00:00"}}]}}, {"Step": {}}]})";

class BinderTest : public testing::Test {
 protected:
  BinderTest() {
    reg.regClass<Step>("Step");
    reg.regClass<Wait>("Wait");
    reg.regClass<Group>("Group");
    reg.regClass<Object>("Other");
  }

  template <class T>
  std::string errorOf(const Json::Value& value, T object = T()) {
    JsonDecodeBinder binder(&reg);
    try {
      testing::internal::CaptureStdout();
      binder.decode(value, object);
    } catch (const ParseErrorException& error) {
      testing::internal::GetCapturedStdout();
      return error.what();
    }
    testing::internal::GetCapturedStdout();
    return "no error";
  }

  ClassRegister reg;
};

TEST_F(BinderTest, EveryKindOfFieldIsReadAndWrittenBackTheSame) {
  JsonDecodeBinder decoder(&reg);
  Plan plan;
  plan.numbers = {9, 9, 9};
  decoder.decode(json(kPlan), plan);
  EXPECT_EQ(-3, plan.level);
  EXPECT_EQ(18446744073709551615u, plan.total);
  EXPECT_EQ(2.0, plan.cost) << "an integer is a fine double";
  EXPECT_EQ(std::string("a\0b", 3), plan.name);
  EXPECT_EQ(date(2024, 2, 29), plan.day);
  EXPECT_EQ(time_from_string("2024-03-05 07:08:09"), plan.start);
  EXPECT_EQ("night", *plan.shift);
  EXPECT_EQ((std::vector<int>{1, 2}), plan.numbers) << "a list of values is cleared first";
  EXPECT_EQ(0.5, plan.slots.at(1).load) << "the default";
  EXPECT_EQ(boost::posix_time::minutes(10), dynamic_cast<Wait&>(*plan.step).length);
  ASSERT_EQ(2u, plan.steps.size());

  Json::Value expected = json(kPlan);
  expected["slots"][1]["load"] = 0.5;
  expected["cost"] = 2.0;
  EXPECT_EQ(expected.toStyledString(), JsonEncodeBinder().encode(plan).toStyledString());
}

TEST_F(BinderTest, ErrorsNameTheWholePath) {
  struct Case {
    const char* change;  // members that replace those of the plan
    const char* error;
  };
  const Case cases[] = {
      {R"({"count": null})", "count: not found"},
      {R"({"main": {}})", "main.machine: not found"},
      {R"({"main": {"machine": 1, "z": 1, "b": 2}})", "main: unknown json key:[b]"},
      {R"({"main": 5})", "main: should be a object"},
      {R"({"count": "x"})", "count: Value is not convertible to Int."},
      {R"({"count": 1.5})", "count: Value is not convertible to Int."},
      {R"({"count": true})", "count: Value is not convertible to Int."},
      {R"({"count": 3000000000})", "count: LargestInt out of Int range"},
      {R"({"size": -1})", "size: LargestInt out of UInt range"},
      {R"({"level": 40000})", "level: value out of short range"},
      {R"({"port": 65536})", "port: value out of unsigned short range"},
      {R"({"distance": 1e30})", "distance: double out of Int64 range"},
      {R"({"weight": 1e300})", "weight: value out of float range"},
      {R"({"total": 18446744073709551616})", "total: double out of UInt64 range"},
      {R"({"distance": 9223372036854775808.0})", "distance: double out of Int64 range"},
      {R"({"distance": 9223372036854775808})", "distance: LargestUInt out of Int64 range"},
      {R"({"cost": "1"})", "cost: Value is not convertible to double."},
      {R"({"active": 1})", "active: Value is not convertible to bool."},
      {R"({"name": 5})", "name: Value is not convertible to string."},
      {R"({"start": {"b": [1, "x"]}})", "start: error: jv={\"b\":[1,\"x\"]}"},
      {R"({"start": "2024-02-30 00:00:00"})",
       "start: cant not parse [2024-02-30 00:00:00] as time"},
      {R"({"times": ["2024-03-05 00:00:00", "noon"]})", "times[1]: cant not parse [noon] as time"},
      {R"({"numbers": 5})", "numbers: should be a list"},
      {R"({"numbers": [1, null]})", "numbers[1]: not found"},
      {R"({"slots": [{"machine": 1}, {"load": 1}]})", "slots[1].machine: not found"},
      {R"({"step": null})", "step: not found"},
      {R"({"step": {}})", "step: DynamicType object must have a unique key as it's type"},
      {R"({"step": [1]})", "step: DynamicType object must have a unique key as it's type"},
      {R"({"steps": {}})", "steps: should be a object array"},
      {R"({"steps": null})", "steps: should be a object array"},
      {R"({"steps": [{"Step": {}}, 5]})", "steps[1]: should be a object"},
      {R"({"steps": [{"Other": {}}]})", "steps[0]: Other miss register"},
      {R"({"steps": [{"Step": {}, "Wait": {}}]})",
       "steps[0]: DynamicType object must have a unique key as it's type"},
      {R"({"steps": [{"Group": {"steps": [{"Wait": {"length": 5}}]}}]})",
       "steps[0].Group.steps[0].Wait.length: error: jv=5"},
      {R"({"steps": [{"Group": {"steps": [{"Nobody": {}}]}}]})",
       "steps[0].Group.steps[0]: Nobody miss register"},
      {R"({"steps": [{"Wait": 5}]})", "steps[0].Wait: should be a object"}};
  for (const Case& c : cases) {
    Json::Value value = json(kPlan);
    const Json::Value change = json(c.change);
    for (const std::string& key : change.getMemberNames()) value[key] = change[key];
    EXPECT_EQ(c.error, errorOf<Plan>(value)) << c.change;
  }
  EXPECT_EQ("should be a object", errorOf<Slot>(json("[1]")));
  EXPECT_EQ("machine: not found", errorOf<Slot>(Json::Value()));
  EXPECT_EQ("no error", errorOf<Slot>(json(R"({"machine": 1, "load": null})")))
      << "null is missing, but known";
}

TEST_F(BinderTest, SmallIntegersAreNumbers) {
  struct Bytes {
    signed char level = 0;
    unsigned char count = 0;
    void setBind(Binder* binder, bool) {
      binder->bind("level", level);
      binder->bind("count", count);
    }
  };
  Bytes bytes;
  JsonDecodeBinder().decode(json(R"({"level": -128, "count": 255})"), bytes);
  const Json::Value written = JsonEncodeBinder().encode(bytes);
  EXPECT_EQ(-128, written["level"].asInt());
  EXPECT_EQ(255, written["count"].asInt());
  EXPECT_EQ("level: value out of signed char range",
            errorOf<Bytes>(json(R"({"level": 128, "count": 0})")));
}

TEST_F(BinderTest, AMissingClassKeepsItsErrorTypeOnTheWayOut) {
  JsonDecodeBinder binder(&reg);
  Group group;
  EXPECT_THROW(binder.decode(json(R"({"steps": [{"Group": {"steps": [{"No": {}}]}}]})"), group),
               ClassMissRegException);
}

TEST_F(BinderTest, UnknownKeysPassWhenAcceptedAtEveryDepth) {
  JsonDecodeBinder binder(&reg);
  binder.setAcceptUnknownKeys(true);
  Group group;
  binder.decode(
      json(R"({"x": 1, "steps": [{"Wait": {"length": "01:00:00", "y": 2}}, {"Step": {"z": 0}}]})"),
      group);
  EXPECT_EQ(2u, group.steps.size());
}

TEST_F(BinderTest, ManyFieldsAndAFieldBoundTwiceDoNotHideAnUnknownKey) {
  struct Wide {
    std::array<int, 40> fields{};
    void setBind(Binder* binder, bool) {
      for (std::size_t i = 0; i < fields.size(); ++i) {
        binder->bind("key" + std::to_string(i), fields[i], 0);
      }
      binder->bind("key0", fields[0]);
    }
  };
  Json::Value value;
  for (int i = 0; i < 40; ++i) value["key" + std::to_string(i)] = i;
  Wide wide;
  JsonDecodeBinder().decode(value, wide);
  EXPECT_EQ(39, wide.fields[39]);
  value.removeMember("key7");
  value["other"] = 1;
  EXPECT_EQ("unknown json key:[other]", errorOf<Wide>(value));
}

TEST_F(BinderTest, ListsOfRegisteredObjectsTakeADefaultAndARegistryOfTheirOwn) {
  struct Owner {
    std::vector<boost::shared_ptr<Step>> steps;
    Json::Value fallback = json(R"([{"Special": {}}])");
    ClassRegister own;
    void setBind(Binder* binder, bool) { binder->bind("steps", steps, &fallback, &own); }
  };
  Owner owner;
  owner.own.regClass<Step>("Special");
  reg.regClass<Wait>("Special");  // not asked: the list has its own
  JsonDecodeBinder binder(&reg);
  binder.decode(Json::Value(), owner);
  binder.decode(json(R"({"steps": null})"), owner);
  binder.decode(json(R"({"steps": []})"), owner);
  binder.decode(json(R"({"steps": [{"special": {}}]})"), owner);
  ASSERT_EQ(3u, owner.steps.size()) << "created objects are added to those there are";
  EXPECT_EQ("special", owner.steps[2]->dumpStr());
}

TEST_F(BinderTest, WithoutARegistryObjectsByNameCannotBeMade) {
  JsonDecodeBinder binder;
  Group group;
  try {
    binder.decode(json(R"({"steps": [{"Step": {}}]})"), group);
    ADD_FAILURE();
  } catch (const ParseErrorException& error) {
    EXPECT_STREQ("steps[0]: no class _register", error.what());
  }
}

TEST_F(BinderTest, ARegistrySetForAWhileIsRolledBackWithItsLastHolder) {
  JsonDecodeBinder binder;
  {
    boost::shared_ptr<Backup> first = binder.regClassRegisterWithAutoRollBack(&reg);
    const boost::shared_ptr<Backup> second = first;
    first.reset();
    EXPECT_EQ(&reg, binder.classRegister());
    const auto child = test_support::runInChild(
        [&] { static_cast<void>(binder.regClassRegisterWithAutoRollBack(&reg)); });
    EXPECT_EQ(SIGABRT, child.signal);
    EXPECT_NE(std::string::npos, child.errors.find("`this->class_reg == NULL' failed"));
  }
  EXPECT_EQ(nullptr, binder.classRegister());
}

enum class Color { Red, Blue };

struct ColorText {
  static std::string toString(const Color& color) { return color == Color::Red ? "red" : "blue"; }
  static Color fromString(const std::string& text) {
    return text == "red" ? Color::Red : Color::Blue;
  }
};

struct Painted {
  Color color = Color::Red;
  void setBind(Binder* binder, bool) { binder->bind("color", color); }
};

struct PaintedStep : Step, Painted {
  using Painted::setBind;
};

TEST_F(BinderTest, AHostMayAddConvertersAndIsToldWhenOneIsMissing) {
  EXPECT_EQ("color: BUG,  please register converter for cppbind_test::Color",
            errorOf<Painted>(json(R"({"color": "blue"})")));
  JsonDecodeBinder binder;
  binder.setConverter(typeid(Color), boost::make_shared<StringConverterT<Color, ColorText>>());
  Painted painted;
  binder.decode(json(R"({"color": "blue"})"), painted);
  EXPECT_EQ(Color::Blue, painted.color);
  reg.regClass<PaintedStep>("Painted");
  const auto backup = binder.regClassRegisterWithAutoRollBack(&reg);
  boost::shared_ptr<Step> step;
  binder.bindDynamicType(json(R"({"Painted": {"color": "blue"}})"), step);
  EXPECT_EQ(json(R"({"Painted": {"color": "blue"}})"), step->getJsonValue4Bind())
      << "written as it was read";
}

struct Rendering {
  int value = 0;
  Json::Value toJsonValue4Bind() const { return Json::Value("<" + std::to_string(value) + ">"); }
  void fromJsonValue4Bind(const Json::Value& text) { value = std::stoi(text.asString().substr(1)); }
};

TEST_F(BinderTest, AFieldThatRendersItselfDoesSoBothWays) {
  struct Report {
    Rendering rows;
    void setBind(Binder* binder, bool) { binder->bind("rows", rows); }
  };
  Report report;
  JsonDecodeBinder().decode(json(R"({"rows": "<3>"})"), report);
  EXPECT_EQ(json(R"({"rows": "<3>"})"), JsonEncodeBinder().encode(report));
  EXPECT_EQ("rows: stoi", errorOf<Report>(json(R"({"rows": "<x>"})")))
      << "any exception of a field becomes an error with its place";
}

TEST_F(BinderTest, ABinderOfAnotherKindEndsTheProcess) {
  const auto child = test_support::runInChild([] {
    BinderImpBase neither;
    Json::Value value;
    Binder binder(&neither, value);
    int field = 0;
    binder.bind("x", field);
  });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_NE(std::string::npos, child.errors.find("cppbind/imp/binder.h"));
  EXPECT_NE(std::string::npos, child.errors.find("Assertion `\"bug\" == NULL' failed"));
}

TEST_F(BinderTest, AHostMayCallSetBindItself) {
  Json::Value value = json(R"({"machine": 4, "load": 2.0})");
  JsonDecodeBinder decoder;
  Binder reading(&decoder, value);
  Slot slot;
  slot.setBind(&reading, false);
  EXPECT_EQ(0, slot.machine) << "false binds nothing";
  slot.setBind(&reading, true);
  EXPECT_EQ(4, slot.machine);
  JsonEncodeBinder encoder;
  Json::Value written;
  Binder writing(&encoder, written);
  slot.setBind(&writing, true);
  EXPECT_EQ(value, written);
  EXPECT_EQ((std::vector<std::string>{"machine", "load"}), writing.keys());
  Json::Value list(Json::arrayValue);
  EXPECT_THROW(Binder(&decoder, list), ParseErrorException);
}

class JsonFileTest : public test_support::InTemporaryDirectory {
 protected:
  static std::string errorOf(const std::string& path) {
    try {
      readJsonFile(path);
    } catch (const ParseErrorException& error) {
      return error.what();
    }
    return "no error";
  }
};

TEST_F(JsonFileTest, UnreadableAndMalformedFilesAreToldApart) {
  EXPECT_EQ("Can not open file [none.json]", errorOf("none.json"));
  EXPECT_EQ("Can not open file [.]", errorOf("."));
  test_support::writeFile("bad.json", "{\n \"a\": [1, \n}");
  EXPECT_NE(std::string::npos, errorOf("bad.json").find("[bad.json]: * Line 3, Column 1"));
  test_support::writeFile("empty.json", "");
  EXPECT_NE(std::string::npos, errorOf("empty.json").find("value, object or array expected"));
  test_support::writeFile("deep.json", std::string(100000, '['));
  EXPECT_NE(std::string::npos, errorOf("deep.json").find("Exceeded stackLimit"));
}

TEST_F(JsonFileTest, NumbersReadTheSameUnderALocaleWithDecimalComma) {
  struct Comma : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::string numbers =
      "[0.1, -12.50e3, 1.5E-7, 2e5, 1., 1234567.891, 1e400, 3, // 1.5\n"
      " 1.7976931348623157e308, 5.0e-324, 0.30000000000000004, \"1.5 \\\" 2.5\", 1.5e+0000000000002"
      " /* 2.5 */]";
  test_support::writeFile("n.json", numbers);
  test_support::writeFile("ok.json",
                          std::string(numbers).replace(numbers.find("1e400"), 5, "1e40"));
  const std::string error = errorOf("n.json");
  const Json::Value plain = readJsonFile("ok.json");
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Comma));
  const Json::Value underComma = readJsonFile("ok.json");
  const std::string errorUnderComma = errorOf("n.json");
  std::locale::global(before);
  EXPECT_EQ(plain, underComma);
  EXPECT_EQ(1234567.891, plain[5].asDouble());
  EXPECT_NE("no error", error);
  EXPECT_NE("no error", errorUnderComma);
}

}  // namespace cppbind_test
