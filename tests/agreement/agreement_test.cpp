// Loading, checking and the schema say the same of random files, except for the differences that
// the guide lists. VARROW_AGREEMENT_FILES is the number of files of each layout, by default 300.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>
#include <set>

#include "agreement/layouts.h"
#include "libvarrow/libvarrow.h"
#include "support/SchemaCheck.h"
#include "support/support.h"

namespace agreement {

std::ostream& operator<<(std::ostream& out, const Layout& layout) {
  return out << layout.name;
}

namespace {

using namespace test_support;
using cppbind::Fault;
using Path = std::vector<std::string>;

// Differences between the schema and loading.
enum Difference {
  NameInOtherCase,
  TimeInOtherForm,
  RoundedFloat,
  RoundedInteger,
  DayThatDoesNotExist,
  CodeOfTheHost,
  BoundOfText,
  AllowedList,
  UnknownModule,
  Incomplete,
  Undescribed,
  Count
};
constexpr const char* kDifferences[] = {"class name in another case",
                                        "time in another form",
                                        "rounded float",
                                        "rounded integer",
                                        "day that does not exist",
                                        "code of the host",
                                        "bound of text",
                                        "oneOf on a list",
                                        "unknown module name",
                                        "incomplete description",
                                        "codec without description"};
using Differences = std::set<Difference>;

// Returns the reason why the schema does not show the fault; Count if it does.
Difference reasonFor(const Fault& fault) {
  const std::string& message = fault.message;
  const std::string key = fault.path.empty() ? "" : fault.path.back();
  const std::pair<const char*, Difference> reasons[] = {
      {"2024-02-30] as date", DayThatDoesNotExist},
      {"2024-02-30 00:00:00] as time", DayThatDoesNotExist},
      {"must be even", CodeOfTheHost},
      {"is ten", CodeOfTheHost},
      {"ends before it begins", CodeOfTheHost},
      {" is no named module", UnknownModule}};
  for (const auto& [text, reason] : reasons) {
    if (contains(message, text)) return reason;
  }
  if (key == "word" && contains(message, " than ")) return BoundOfText;
  if (key == "pair" && contains(message, " is not one of ")) return AllowedList;
  for (const std::string& element : fault.path) {
    const std::string name = registeredName(element);
    if (name == "Closed" || name == "Fragile") return Incomplete;
    if (element == "either") return Undescribed;
  }
  return Count;
}

std::string textOf(const Json::Value& json) {
  return Json::FastWriter().write(json);
}

Json::Value& valueAt(Json::Value& root, const Path& path) {
  Json::Value* value = &root;
  for (const std::string& key : path) {
    value = value->isArray() ? &(*value)[std::stoi(key.substr(1))] : &(*value)[key];
  }
  return *value;
}

// Writes class names as registered, and floats as the bounds that they round to.
void normalize(Json::Value& json, Differences& differences) {
  for (Json::Value& child : json) normalize(child, differences);
  if (!json.isObject()) return;
  for (const std::string& key : json.getMemberNames()) {
    const std::string name = registeredName(key);
    if (name == key) continue;
    json[name] = json[key];
    json.removeMember(key);
    differences.insert(NameInOtherCase);
  }
  for (const double bound : {0.1, 0.3}) {
    for (const char* key : {"share", "level"}) {
      if (!json.isMember(key) || !json[key].isDouble() || json[key].asDouble() == bound) continue;
      if (static_cast<float>(json[key].asDouble()) != static_cast<float>(bound)) continue;
      json[key] = bound;
      differences.insert(RoundedFloat);
    }
  }
}

struct File {
  Json::Value json;
  cppbind::Faults faults;
  Json::Value normalized;   // as the library writes it
  Differences changes{};    // that made it so
  Differences unseen{};     // faults that the schema need not show
  bool hasVisible = false;  // it has others, too

  File(const Layout& layout, const Json::Value& file)
      : json(file), faults(layout.check(textOf(file))), normalized(file) {
    for (const Fault& fault : faults.first) {
      const std::string meaning = "means \"";
      if (fault.severity == cppbind::Severity::Error) {
        const Difference reason = reasonFor(fault);
        hasVisible = hasVisible || reason == Count;
        unseen.insert(reason);
      } else if (fault.message.rfind(meaning, 0) == 0) {
        const std::string form = fault.message.substr(meaning.size());
        valueAt(normalized, fault.path) = form.substr(0, form.size() - 1);
        changes.insert(TimeInOtherForm);
      }
    }
    normalize(normalized, changes);
  }
};

class Agreement : public InTemporaryDirectory, public testing::WithParamInterface<Layout> {
 protected:
  Agreement() {
    const char* const count = std::getenv("VARROW_AGREEMENT_FILES");
    const auto files =
        randomFiles(GetParam(), count == nullptr ? 300 : static_cast<unsigned>(std::atoi(count)));
    for (const Json::Value& file : files) files_.emplace_back(GetParam(), file);
  }
  std::vector<Json::Value> jsonOfAll(Json::Value File::*member) const {
    std::vector<Json::Value> all;
    for (const File& file : files_) all.push_back(file.*member);
    return all;
  }

  std::vector<File> files_;
};

class WithoutSchema : public Agreement {};

// The key is accepted by the check alone.
Json::Value withoutSchemaKey(Json::Value file) {
  if (file.isObject() && file.get("$schema", 0).isString()) file.removeMember("$schema");
  return file;
}

TEST_P(WithoutSchema, CheckingAndLoadingAgree) {
  std::vector<Json::Value> files = jsonOfAll(&File::json);
  std::transform(files.begin(), files.end(), files.begin(), &withoutSchemaKey);
  const std::vector<Outcome> outcomes = outcomesOf(GetParam(), files);
  std::size_t counts[3] = {};
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const auto& [first, errorCount, warningCount] = files_[i].faults;
    const Outcome& outcome = outcomes[i];
    ++counts[outcome.kind];
    ASSERT_EQ(outcome.kind != Outcome::Loaded, errorCount > 0)
        << textOf(files[i]) << outcome.text << (first.empty() ? "" : first[0].text());
    std::set<std::string> texts;
    for (const Fault& fault : first) EXPECT_TRUE(texts.insert(fault.what()).second) << fault.text();
    if (outcome.kind == Outcome::Loaded) continue;
    ASSERT_TRUE(std::any_of(first.begin(), first.end(),
                            [&](const Fault& fault) { return explains(fault, outcome); }))
        << textOf(files[i]) << outcome.text;
  }
  std::cout << files_.size() << " files: " << counts[Outcome::Loaded] << " load, "
            << counts[Outcome::Threw] << " throw, " << counts[Outcome::Ended]
            << " end the process\n";
  EXPECT_LE(files_.size() / 3, counts[Outcome::Loaded]);
}

bool hasLongInteger(const Json::Value& json) {
  if (json.isNumeric() && std::abs(json.asDouble()) >= 9007199254740992.0) return true;
  return std::any_of(json.begin(), json.end(), &hasLongInteger);
}

TEST_P(Agreement, TheSchemaAndCheckingAgree) {
  const std::string schema = cppbind::schemaText(GetParam().schema());
  const auto verdicts = validBySchema(schema, jsonOfAll(&File::json));
  const auto normalized = validBySchema(schema, jsonOfAll(&File::normalized));
  const auto ofEditors = validBySchema(schema, jsonOfAll(&File::json), true);
  std::size_t counts[Count] = {};
  std::size_t agreeing = 0;
  for (std::size_t i = 0; i < files_.size(); ++i) {
    const File& file = files_[i];
    const bool isValid = normalized[i];
    const bool mayBeEither = file.unseen.count(Incomplete) + file.unseen.count(Undescribed) > 0;
    if (file.hasVisible || !mayBeEither) {
      EXPECT_EQ(!file.hasVisible, isValid)
          << textOf(file.normalized)
          << (file.faults.first.empty() ? "" : file.faults.first[0].text());
    }
    Differences differences;
    if (isValid) differences = file.unseen;
    if (verdicts[i] != isValid) {
      EXPECT_TRUE(isValid && !file.changes.empty()) << textOf(file.json);
      differences.insert(file.changes.begin(), file.changes.end());
    }
    if (ofEditors[i] != verdicts[i]) {
      EXPECT_TRUE(hasLongInteger(file.json)) << textOf(file.json);
      differences.insert(RoundedInteger);
    }
    agreeing += verdicts[i] == !file.faults.hasErrors();
    for (const Difference difference : differences) ++counts[difference];
  }
  std::cout << files_.size() << " files: " << agreeing << " agree";
  for (std::size_t i = 0; i < Count; ++i) std::cout << ", " << kDifferences[i] << ' ' << counts[i];
  std::cout << '\n';
}

std::string nameOf(const testing::TestParamInfo<Layout>& info) {
  return info.param.name;
}

INSTANTIATE_TEST_SUITE_P(Files, WithoutSchema, testing::ValuesIn(kLayouts), &nameOf);
INSTANTIATE_TEST_SUITE_P(Files, Agreement, testing::ValuesIn(kLayouts.begin(), kLayouts.end() - 1),
                         &nameOf);

}  // namespace
}  // namespace agreement
