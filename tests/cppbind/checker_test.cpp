// All faults of a text in one call, and the agreement of checking and loading.
#include "cppbind/Checker.h"

#include <cstdlib>
#include <iostream>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <sstream>

#include "cppbind/cppbind.h"
#include "support/json_paths.h"
#include "support/support.h"

namespace {

using namespace cppbind;
using namespace test_support;

enum class Mode { fast, exact };
constexpr auto enumNames(Mode) {
  return names<Mode>({{Mode::fast, "fast"}, {Mode::exact, "exact"}});
}

struct Slot {
  void setBind(Binder* binder, bool) {
    binder->bind("from", from);
    binder->bind("to", to);
    binder->bind("pause", pause, boost::posix_time::time_duration());
    if (binder->isReading() && !binder->isDescribing() && from > to.date()) {
      throw ParseErrorException("to", "is before \"from\"");
    }
  }
  boost::gregorian::date from;
  boost::posix_time::ptime to;
  boost::posix_time::time_duration pause;
};

struct Step : Object {
  void setBind(Binder* binder, bool) {
    binder->field("rule", rule).oneOf({"SPT", "MWKR"});
    binder->field("tries", tries, 1).between(1, 9);
    binder->field("sizes", sizes, {}).each().atLeast(1).atMost(5);
    binder->bind("weights", weights, {});
    binder->bind("limit", limit);
    binder->bind("mode", mode, Mode::fast);
    binder->bind("slots", slots, {});
    binder->field("tags", tags, {}).each().notEmpty();
  }
  std::string rule;
  int tries = 0;
  std::vector<int> sizes;
  std::map<std::string, double> weights;
  std::optional<unsigned> limit;
  Mode mode = Mode::fast;
  std::vector<Slot> slots;
  std::set<std::string> tags;
};

struct Chain : Object {
  void setBind(Binder* binder, bool) {
    binder->bind("modules", modules);
    binder->bind("spare", spare, nullptr);
  }
  std::vector<boost::shared_ptr<Object>> modules;
  boost::shared_ptr<Object> spare;
};

struct Fragile : Object {
  Fragile() { throw std::runtime_error("broken"); }
};

// Its description ends early.
struct Closed : Object {
  void setBind(Binder* binder, bool) {
    boost::shared_ptr<Object> object;
    binder->bind("object", object);
    if (object == nullptr) throw std::logic_error("no object");
    int other = 0;
    binder->bind("other", other);
  }
};

// A field of either kind: the faults of the first attempt do not count.
struct Either {
  Slot slot;
  std::vector<int> list;
};

}  // namespace

template <>
struct cppbind::FieldCodec<Either> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, Either& field) {
    try {
      FieldCodec<Slot>::read(decoder, json, field.slot);
    } catch (const ParseErrorException&) {
      FieldCodec<std::vector<int>>::read(decoder, json, field.list);
    }
  }
  static void write(JsonEncodeBinder&, const Either&, Json::Value&) {}
};

namespace {

struct Choice : Object {
  void setBind(Binder* binder, bool) { binder->bind("either", either); }
  Either either;
};

ClassRegister classes() {
  ClassRegister reg;
  reg.regClass<Step>("Step");
  reg.regClass<Chain>("Chain");
  reg.regClass<Fragile>("Fragile");
  reg.regClass<Closed>("Closed");
  reg.regClass<Choice>("Choice");
  return reg;
}

// Returns the faults, each in a line.
std::string faultsIn(const std::string& text) {
  const ClassRegister reg = classes();
  testing::internal::CaptureStdout();
  std::string lines;
  const Faults faults = check<Chain>(text, &reg);
  for (const Fault& fault : faults.first) lines += fault.text() + "\n";
  if (faults.unlistedCount() > 0) lines += std::to_string(faults.unlistedCount()) + " more\n";
  return lines + testing::internal::GetCapturedStdout();
}

std::string faultsOfStep(const std::string& fields) {
  return faultsIn("{\"modules\": [\n{\"Step\": {" + fields + "}}]}");
}

TEST(Checker, AllFaultsOfAFileAreFoundAtTheirPlaces) {
  EXPECT_EQ(
      "3:12: error: modules[0].Step.rule: \"FOO\" is not one of \"SPT\", \"MWKR\"\n"
      "3:28: error: modules[0].Step.tries: 0 is less than 1\n"
      "3:41: error: modules[0].Step.sizes[0]: 0 is less than 1\n"
      "3:47: error: modules[0].Step.sizes[2]: 7 is more than 5\n"
      "4:20: error: modules[0].Step.weights.a: Value is not convertible to double.\n"
      "4:30: error: modules[0].Step.weights.c: not found\n"
      "5:12: error: modules[0].Step.mode: \"exat\" is not one of \"fast\", \"exact\"\n"
      "6:13: error: modules[0].Step.slots[0].to: not found\n"
      "6:14: error: modules[0].Step.slots[0].from: not found; did you mean \"from\"?\n"
      "6:26: error: modules[0].Step.slots[1]: should be a object\n"
      "7:1: error: modules[0].Step: unknown json key:[trie]; did you mean \"tries\"?\n"
      "8:4: error: modules[1]: Stepp miss register; did you mean \"Step\"?\n"
      "9:15: error: modules[2].Fragile: broken\n"
      "10:3: error: modules[3]: DynamicType object must have a unique key as it's type\n"
      "10:7: error: modules[4]: should be a object\n"
      "11:12: error: modules[5].Step.rule: not found\n"
      "11:27: error: spare: DynamicType object must have a unique key as it's type\n",
      faultsIn(R"({"modules": [
{"Step": {
  "rule":  "FOO", "tries": 0, "sizes": [0, 1, 7],
  "weights": {"a": "x", "c": null},
  "mode":  "exat",
  "slots": [{"fron": 1}, 3],
"trie": 2}},
  {"Stepp": {"anything": 1}},
  {"Fragile": {}},
  {}, 1,
  {"Step": {}}], "spare": 1})"));
}

TEST(Checker, AMisspeltKeyIsOneFault) {
  EXPECT_EQ("2:11: error: modules[0].Step.rule: not found; did you mean \"rule\"?\n",
            faultsOfStep(R"("Rul": "SPT", "limit": 1)"));
  EXPECT_EQ(
      "2:10: error: modules[0].Step.rule: not found\n"
      "2:11: error: modules[0].Step: unknown json key:[other]\n",
      faultsOfStep(R"("other": "SPT")"));
  EXPECT_EQ("1:2: error: modules: should be a object array; did you mean \"modules\"?\n",
            faultsIn(R"({"moduls": [{"Step": 1}]})"));
  EXPECT_EQ("2:26: error: modules[0].Step: unknown json key:[ruel]; did you mean \"rule\"?\n",
            faultsOfStep(R"("rule": "SPT", "ruel": 1)"));
}

TEST(Checker, SurprisingTextsAreWarnings) {
  EXPECT_EQ(
      "2:26: warning: modules[0].Step.rule: the key is given twice; the last one counts\n"
      "3:20: warning: modules[0].Step.slots[0].from: means \"2024-03-05\"\n"
      "3:42: warning: modules[0].Step.slots[0].to: means \"2024-03-05 07:08:09\"\n"
      "4:10: warning: modules[0].Step.slots[0].pause: means \"90:00:00\"\n"
      "4:21: warning: text after the value is ignored\n",
      faultsOfStep(R"("rule": "SPT", "rule": "SPT",
"slots": [{"from": "2024-03-05x", "to":  "2024-03-05 07:08:09 and more",
"pause": "90"}]}}]} null //)"));
  EXPECT_EQ("", faultsOfStep(R"("rule": "SPT", "slots": [{"from": "2024-03-05",
            "to": "not-a-date-time", "pause": "26:05:03"}])"));
  // Errors win over warnings at the same path.
  EXPECT_EQ("2:37: error: modules[0].Step.rule: Value is not convertible to string.\n",
            faultsOfStep(R"("rule": "SPT", "rule":    3)"));
}

TEST(Checker, CodeOfTheHostIsNotMisledAndNotJudged) {
  const auto choice = [](const std::string& value) {
    return faultsIn(R"({"modules": [{"Choice": {"either": )" + value + "}}]}");
  };
  EXPECT_EQ("", choice("[1, 2]"));
  EXPECT_EQ("1:40: error: modules[0].Choice.either[1]: Value is not convertible to Int.\n",
            choice(R"([1, ""])"));
  // Only the first fault is known.
  EXPECT_EQ(
      "1:36: error: modules[0].Closed.object: DynamicType object must have a unique key as it's "
      "type\n"
      "1:64: error: spare: DynamicType object must have a unique key as it's type\n",
      faultsIn(R"({"modules": [{"Closed": {"object": 1, "other": ""}}], "spare": 1})"));
  const std::string slot = R"("slots": [{"from": "2024-03-05", "to": "2024-03-04 00:00:00"}])";
  EXPECT_EQ("2:64: error: modules[0].Step.slots[0].to: is before \"from\"\n",
            faultsOfStep(R"("rule":"SPT", )" + slot));
}

TEST(Checker, PlacesAreThoseOfEditors) {
  const std::string fault = "error: modules[0].Step.rule: Value is not convertible to string.\n";
  const std::pair<const char*, const char*> cases[] = {
      {"\xEF\xBB\xBF{\"modules\":[{\"Step\":{\"rule\":1}}]}", "1:29: "},
      {"{\"modules\":[{\"Step\":{/*\t\xC3\xA4\xF0\x9F\x98\x80*/\"rule\":1}}]}", "1:36: "},
      {"{\"modules\":\r\n[{\"Step\":\r{\"rule\":1}}]}", "3:9: "},
      {"{\"modules\":[{\"St\\u0065p\":{\"r\\u0075le\":1}}]}", "1:39: "},
      {"{\"modules\":[{\"Step\":{\"rule\":\"SPT\",\"rule\":1}}]}", "1:42: "},
  };
  for (const auto& [text, place] : cases) EXPECT_EQ(place + fault, faultsIn(text)) << text;
  EXPECT_EQ("2:5: error: * Line 2, Column 5   Syntax error: value, object or array expected. ",
            faultsIn("\xEF\xBB\xBF{\"modules\":\n  [ ?]}").substr(0, 80));
  EXPECT_EQ("error: Can not open file [none.json]",
            Checker::ofFile("none.json")->faults().first.at(0).text());
}

TEST(Checker, ManyAndDeepFaultsAreCounted) {
  std::string elements = "{}";
  for (int i = 0; i < 10000; ++i) elements += R"(,{"Stepp": {}},{"Step": {"tries": "x"}})";
  EXPECT_TRUE(contains(faultsIn(R"({"modules": [)" + elements + "]}"), "\n29901 more\n"));
  std::string deep;
  for (int i = 0; i < 300; ++i) deep += R"({"Chain": {"spare": 1, "odd": 1, "modules": [1,)";
  deep += "2";
  for (int i = 0; i < 300; ++i) deep += "]}}";
  EXPECT_TRUE(contains(faultsIn(R"({"modules": [)" + deep + "]}"), "\n801 more\n"));
}

// A random change of a valid file.
class Changes {
 public:
  explicit Changes(unsigned seed) : random_(seed) {}

  void change(Json::Value& root) {
    std::vector<Json::Value*> values;
    collect(root, values);
    Json::Value& value = *values[below(values.size())];
    switch (below(6)) {
      case 0:
        value = anyValue();
        break;
      case 1:
        if (!value.isObject() || value.empty()) break;
        value.removeMember(keyOf(value));
        break;
      case 2: {
        if (!value.isObject() || value.empty()) break;
        const std::string key = keyOf(value);
        value[key + "x"] = value[key];
        value.removeMember(key);
        break;
      }
      case 3:
        if (value.isObject()) value[anyKey()] = anyValue();
        if (value.isArray()) value.append(anyValue());
        break;
      case 4:
        if (value.isArray() && !value.empty()) value.append(value[0u]);
        break;
      default: {
        const Json::Value copy = *values[below(values.size())];
        value = copy;
      }
    }
  }

  std::size_t below(std::size_t count) { return random_() % count; }

 private:
  static void collect(Json::Value& json, std::vector<Json::Value*>& values) {
    values.push_back(&json);
    for (Json::Value& child : json) collect(child, values);
  }
  std::string keyOf(const Json::Value& object) {
    return object.getMemberNames()[below(object.size())];
  }
  std::string anyKey() {
    const char* keys[] = {"rule", "tries", "Step", "Chain", "modules", "", "a.b", "[0]", "to"};
    return keys[below(std::size(keys))];
  }
  Json::Value anyValue() {
    static const Json::Value values = json(R"([null, true, 0, -1, 3, 2.5, 1e300, "", "SPT", "fast",
        "2024-03-05", "2024-3-5 1", "90", [], [1], {}, {"Step": {"rule": "MWKR"}}, {"None": {}},
        {"Choice": {"either": []}}, {"Closed": {"object": {"Step": {}}}}, {"Fragile": null},
        {"chain": {"modules": [{"STEP": {}}]}}])");
    return values[static_cast<Json::ArrayIndex>(below(values.size()))];
  }

  std::mt19937 random_;
};

// Returns the exception that loading throws, or nothing.
std::optional<std::pair<std::vector<std::string>, std::string>> loadingError(
    const std::string& text, ClassRegister& reg) {
  Chain chain;
  try {
    JsonDecodeBinder(&reg).decode(json(text), chain);
  } catch (const ParseErrorException& error) {
    return std::make_pair(error.path(), error.message());
  }
  return std::nullopt;
}

TEST(Checker, CheckingAndLoadingAgree) {
  const char* const count = std::getenv("VARROW_AGREEMENT_FILES");
  const int files = count == nullptr ? 1500 : std::atoi(count);
  const Json::Value valid = json(R"({"modules": [
      {"Step": {"rule": "SPT", "tries": 3, "sizes": [1, 5], "weights": {"a": 1}, "limit": null,
                "mode": "exact", "tags": ["x", "y"],
                "slots": [{"from": "2024-03-05", "to": "2024-03-06 07:00:00", "pause": "01:00:00"}]}},
      {"Chain": {"modules": [{"Step": {"rule": "MWKR"}}, {"Choice": {"either": [1]}}]}}]})");
  ClassRegister reg = classes();
  int loaded = 0;
  testing::internal::CaptureStdout();
  for (int i = 0; i < files; ++i) {
    Changes changes(static_cast<unsigned>(i));
    Json::Value changed = valid;
    for (std::size_t n = 1 + changes.below(4); n > 0; --n) changes.change(changed);
    const std::string text = Json::FastWriter().write(changed);
    const auto error = loadingError(text, reg);
    const Faults faults = check<Chain>(text, &reg);
    loaded += error ? 0 : 1;
    ASSERT_EQ(error.has_value(), faults.hasErrors()) << text << faults.first.at(0).text();
    if (!error) continue;
    const bool isFound =
        std::any_of(faults.first.begin(), faults.first.end(), [&](const Fault& fault) {
          return fault.path == error->first && fault.message == error->second;
        });
    ASSERT_TRUE(isFound) << text << error->second;
    std::set<std::string> texts;
    for (const Fault& fault : faults.first) {
      EXPECT_TRUE(texts.insert(fault.what()).second) << text << fault.text();
    }
  }
  testing::internal::GetCapturedStdout();
  EXPECT_LT(files / 20, loaded) << "of " << files;
}

}  // namespace
