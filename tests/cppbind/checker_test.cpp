// All faults of a text in one call.
#include "cppbind/Checker.h"

#include "cppbind/classes.h"
#include "support/CommaLocale.h"

namespace cppbind_test {
namespace {

struct Task : Step {
  void setBind(Binder* binder, bool) {
    binder->field("rule", rule).oneOf({"SPT", "MWKR"});
    binder->field("tries", tries, 1).between(1, 9);
    binder->field("sizes", sizes, {}).each().atLeast(1).atMost(5);
    binder->bind("weights", weights, {});
    binder->bind("limit", limit);
    binder->bind("mode", mode, Order::fifo);
    binder->bind("slots", slots, {});
    binder->field("tags", tags, {}).each().notEmpty();
  }
  std::string rule;
  int tries = 0;
  std::vector<int> sizes;
  std::map<std::string, double> weights;
  std::optional<unsigned> limit;
  Order mode = Order::fifo;
  std::vector<agreement::Slot> slots;
  std::set<std::string> tags;
};

ClassRegister classes() {
  ClassRegister reg;
  reg.regClass<Task>("Task");
  reg.regClass<Group>("Group");
  reg.regClass<Broken<std::bad_any_cast>>("Broken");
  reg.regClass<agreement::Closed<Step>>("Closed");
  return reg;
}

// Returns the faults, each in a line.
std::string faultsIn(const std::string& text) {
  const ClassRegister reg = classes();
  testing::internal::CaptureStdout();
  std::string lines;
  const Faults faults = check<Group::Data4Bind>(text, &reg);
  for (const Fault& fault : faults.first) lines += fault.text() + "\n";
  if (faults.unlistedCount() > 0) lines += std::to_string(faults.unlistedCount()) + " more\n";
  return lines + testing::internal::GetCapturedStdout();
}

std::string faultsOfTask(const std::string& fields) {
  return faultsIn("{\"steps\": [\n{\"Task\": {" + fields + "}}]}");
}

TEST(Checker, AllFaultsOfAFileAreFoundAtTheirPlaces) {
  EXPECT_EQ(
      "3:12: error: steps[0].Task.rule: \"FOO\" is not one of \"SPT\", \"MWKR\"\n"
      "3:28: error: steps[0].Task.tries: 0 is less than 1\n"
      "3:41: error: steps[0].Task.sizes[0]: 0 is less than 1\n"
      "3:44: error: steps[0].Task.sizes[1]: Value is not convertible to Int.\n"
      "3:48: error: steps[0].Task.sizes[2]: 7 is more than 5\n"
      "4:20: error: steps[0].Task.weights.a: Value is not convertible to double.\n"
      "4:30: error: steps[0].Task.weights.c: not found\n"
      "5:12: error: steps[0].Task.mode: \"EDF\" is not one of \"FIFO\", \"EDD\", \"due\"\n"
      "6:13: error: steps[0].Task.slots[0].to: not found\n"
      "6:14: error: steps[0].Task.slots[0].from: not found; did you mean \"from\"?\n"
      "6:26: error: steps[0].Task.slots[1]: should be a object\n"
      "7:1: error: steps[0].Task: unknown json key:[trie]\n"
      "8:4: error: steps[1]: Taskk miss register; did you mean \"Task\"?\n"
      "9:14: error: steps[2].Broken: bad any_cast\n"
      "10:3: error: steps[3]: DynamicType object must have a unique key as it's type\n"
      "10:7: error: steps[4]: should be a object\n"
      "11:12: error: steps[5].Task.rule: not found\n"
      "11:27: error: spare: DynamicType object must have a unique key as it's type\n",
      faultsIn(R"({"steps": [
{"Task": {
  "rule":  "FOO", "tries": 0, "sizes": [0, "", 7],
  "weights": {"a": "x", "c": null},
  "mode":  "EDF",
  "slots": [{"fron": 1}, 3],
"trie": 2}},
  {"Taskk": {"anything": 1}},
  {"Broken": {}},
  {}, 1,
  {"Task": {}}], "spare": 1})"));
}

TEST(Checker, AMisspeltKeyIsOneFault) {
  EXPECT_EQ("2:11: error: steps[0].Task.rule: not found; did you mean \"rule\"?\n",
            faultsOfTask(R"("Rul": "SPT", "limit": 1)"));
  EXPECT_EQ(
      "2:10: error: steps[0].Task.rule: not found\n"
      "2:11: error: steps[0].Task: unknown json key:[other]\n",
      faultsOfTask(R"("other": "SPT")"));
  EXPECT_EQ("1:2: error: steps: should be a object array; did you mean \"steps\"?\n",
            faultsIn(R"({"stesp": [{"Task": 1}]})"));
  EXPECT_EQ("2:26: error: steps[0].Task: unknown json key:[trise]; did you mean \"tries\"?\n",
            faultsOfTask(R"("rule": "SPT", "trise": 1)"));
}

TEST(Checker, SurprisingTextsAreWarnings) {
  EXPECT_EQ(
      "2:26: warning: steps[0].Task.rule: the key is given twice; the last one counts\n"
      "3:20: warning: steps[0].Task.slots[0].from: means \"2024-03-05\"\n"
      "3:42: warning: steps[0].Task.slots[0].to: means \"2024-03-05 07:08:09\"\n"
      "4:10: warning: steps[0].Task.slots[0].pause: means \"90:00:00\"\n"
      "4:21: warning: text after the value is ignored\n",
      faultsOfTask(R"("rule": "SPT", "rule": "SPT",
"slots": [{"from": "2024-03-05x", "to":  "2024-03-05 07:08:09 and more",
"pause": "90"}]}}]} null //)"));
  EXPECT_EQ("", faultsOfTask(R"("rule": "SPT", "slots": [{"from": "2024-03-05",
            "to": "not-a-date-time", "pause": "26:05:03"}])"));
  EXPECT_EQ(
      "2:26: warning: steps[0].Task.rule: the key is given twice; the last one counts\n"
      "2:37: error: steps[0].Task.rule: Value is not convertible to string.\n",
      faultsOfTask(R"("rule": "SPT", "rule":    3)"));
}

// Binds the key that the check ignores for other types, and a list of itself twice.
struct Own {
  void setBind(Binder* binder, bool) {
    binder->bind("$schema", schema);
    binder->bind("parts", parts, {});
    binder->bind("parts", parts, {});
  }
  std::string schema;
  std::vector<Own> parts;
};

TEST(Checker, ATypeMayBindTheNameOfItsSchema) {
  EXPECT_FALSE(check<Own>(R"({"$schema": "a"})").hasErrors());
  EXPECT_EQ("$schema: not found", check<Own>("{}").first.at(0).what());
  EXPECT_TRUE((check<std::map<std::string, int>>(R"({"$schema": "a"})").hasErrors()));
  EXPECT_EQ(json(R"(["$schema"])"), jsonSchema(describe<Own>())["required"]);
  expectAbort("path", [] { Checker("{}").checkObject({}, Json::Value(), classes()); });
}

TEST(Checker, FaultsOfTheHostsCodeAreFound) {
  // The description ends at the first fault.
  EXPECT_EQ(
      "1:23: error: steps[0].Closed: no limit\n"
      "1:61: error: spare: DynamicType object must have a unique key as it's type\n",
      faultsIn(R"({"steps": [{"Closed": {"limit": 0, "other": ""}}], "spare": 1})"));
  const std::string slot = R"("slots": [{"from": "2024-03-05", "to": "2024-03-04 00:00:00"}])";
  EXPECT_EQ("2:35: error: steps[0].Task.slots[0]: ends before it begins\n",
            faultsOfTask(R"("rule":"SPT", )" + slot));
}

TEST(Checker, PlacesAreThoseOfEditors) {
  const std::string fault = "error: steps[0].Task.rule: Value is not convertible to string.\n";
  const std::pair<const char*, const char*> cases[] = {
      {"\xEF\xBB\xBF{\"steps\":[{\"Task\":{\"rule\":1}}]}", "1:27: "},
      {"{\"steps\":[{\"Task\":{/*\t\xC3\xA4\xF0\x9F\x98\x80*/\"rule\":1}}]}", "1:34: "},
      {"{\"steps\":\r\n[{\"Task\":\r{\"rule\":1}}]}", "3:9: "},
      {"{\"steps\":[{\"T\\u0061sk\":{\"r\\u0075le\":1}}]}", "1:37: "},
      {"{\"steps\":[{\"Task\":{\"weights\":{\"a\":1.5},\"rule\":1}}]}", "1:47: "},
  };
  const auto checkAll = [&] {
    for (const auto& [text, place] : cases) EXPECT_EQ(place + fault, faultsIn(text)) << text;
    const std::string lines(1500, '\n');
    EXPECT_EQ("1501:3: error: * Line 1501", faultsIn(lines + "[ ?]").substr(0, 26));
  };
  checkAll();
  const CommaLocale locale;
  checkAll();
  EXPECT_EQ("2:5: error: * Line 2, Column 5   Syntax error: value, object or array expected. ",
            faultsIn("\xEF\xBB\xBF{\"steps\":\n  [ ?]}").substr(0, 80));
  EXPECT_EQ("1:15: error: unknown json key:[a\xC3\xA4 b  [2J]\n",
            faultsIn("{\"steps\": [], \"a\xC3\xA4\\rb\\u0000\\u001b[2J\": 1}"));
  EXPECT_EQ("error: Can not open file [none.json]",
            Checker::ofFile("none.json")->faults().first.at(0).text());
}

TEST(Checker, ManyAndDeepFaultsAreCounted) {
  std::string elements = "{}";
  for (int i = 0; i < 10000; ++i) elements += R"(,{"Taskk": {}},{"Task": {"tries": "x"}})";
  EXPECT_TRUE(contains(faultsIn(R"({"steps": [)" + elements + "]}"), "\n29901 more\n"));
  // A key that is bound twice is not checked twice at each level.
  std::string own = "1";
  for (int i = 0; i < 300; ++i) own = "{\"parts\": [" + own + "]}";
  EXPECT_EQ(301u, check<Own>(own).errorCount);
  std::string deep;
  for (int i = 0; i < 300; ++i) deep += R"({"Group": {"spare": 1, "odd": 1, "steps": [1,)";
  deep += "2";
  for (int i = 0; i < 300; ++i) deep += "]}}";
  EXPECT_TRUE(contains(faultsIn(R"({"steps": [)" + deep + "]}"), "\n801 more\n"));
}

}  // namespace
}  // namespace cppbind_test
