#include "agreement/Changes.h"

#include <boost/algorithm/string/case_conv.hpp>

#include "agreement/classes.h"
#include "support/support.h"

namespace agreement {

namespace {

using test_support::json;

const Json::Value kValues = json(R"([null, true, 0, 1, 2.0, 2.5, "", "SPT", "EDD", "2024-03-05",
    [], [1], [null], {}, {"a": 1}, {"a": null}, {"Bare": {}}, {"bare": {"odd": 1}}, {"None": {}},
    {"Bare": {}, "A/~ <list>": [1]}, {"Stranger": {}}, {"Fragile": {}}, {"Closed": {"limit": 0}},
    {"Closed": {"limit": 2, "more": 3}}, {"Texts": {"rule": "SPT", "either": {}}}])");
const Json::Value kNumbers = json(R"([-1, 0, 1, 2, 2.0, 3, 5, 10, 0.1, 0.3, 0.30000001, 0.31, 1e30,
    1e300, 127, 128, 2147483648, -9223372036854775808, -9223372036854775809, 18446744073709551615,
    18446744073709551616, 9007199254740993])");
const Json::Value kTexts =
    json(R"(["", "MWKR", "FIFO", "a", "zz", "2024-02-30", "2024-02-30 00:00:00", "2024-3-5",
    "2023-12-08", "2024-03-04 24:00:00", "2024-01-01 00:00:00", "2024-01-01 00:00:00 ", "26:00:00",
    "26:00:01", "90", "00:00:02", "00:00:04", "due", "-01:00:00", "100:00:00", "01:00:00.5", "not-a-date-time", "+infinity", "-infinity",
    "1400-01-01", "9999-12-31 23:59:59", "1399-12-31"])");
const Json::Value kObjectsByClass = json(kObjects);
const Json::Value kKeys = json(R"(["rule", "tries", "limit", "modules", "", "a.b",
    "[0]", "to", "$schema", "rule_level", "rule_list", "mainModule"])");

void collect(Json::Value& json, std::vector<Json::Value*>& values) {
  values.push_back(&json);
  for (Json::Value& child : json) collect(child, values);
}

}  // namespace

Json::Value Changes::objects(bool isList) {
  if (!isList) return oneOf(kObjectsByClass);
  Json::Value list(Json::arrayValue);
  for (std::size_t n = 1 + below(3); n > 0; --n) list.append(oneOf(kObjectsByClass));
  return list;
}

void Changes::change(Json::Value& root) {
  isOfRules_ = root.isMember("rule_list");
  for (std::size_t n = below(5) > 0 ? 1 : 2 + below(2); n > 0; --n) {
    std::vector<Json::Value*> values;
    collect(root, values);
    Json::Value* value = values[below(values.size())];
    // Most changes of objects and lists keep the file valid.
    while (!value->isObject() && !value->isArray() && below(3) > 0) {
      value = values[below(values.size())];
    }
    changeValue(*value, values);
  }
}

void Changes::changeValue(Json::Value& value, const std::vector<Json::Value*>& others) {
  if (value.isObject() && !value.empty() && below(4) > 0) return changeMember(value);
  if (value.isArray() && !value.empty() && below(4) > 0) return changeElement(value);
  const std::size_t way = below(6);
  if (way == 0) {
    value = oneOf(kValues);
  } else if (way == 1) {
    value = Json::Value(*others[below(others.size())]);
  } else {
    value = oneOf(value.isString() ? kTexts : value.isNumeric() ? kNumbers : kObjectsByClass);
  }
}

void Changes::changeMember(Json::Value& object) {
  const std::string key = object.getMemberNames()[below(object.size())];
  const auto rename = [&](const std::string& name) {
    const Json::Value member = object[key];
    object.removeMember(key);
    object[name] = member;
  };
  switch (below(9)) {
    case 0:
      return rename(key + "x");
    case 1:
      return rename(boost::to_upper_copy(key));
    case 2:
      object[oneOf(kKeys).asString()] = oneOf(below(2) == 0 ? kValues : kObjectsByClass);
      return;
    case 3:
    case 4:
    case 5:
      if (object.size() == 1) nest(object);
      return;
    default:
      object.removeMember(key);
  }
}

void Changes::changeElement(Json::Value& list) {
  const auto index = static_cast<Json::ArrayIndex>(below(list.size()));
  const Json::Value element = list[index];
  switch (below(3)) {
    case 0:
      return list[index].swap(list[0u]);
    case 1:
      list.append(element);
      return;
    default:
      Json::Value removed;
      list.removeIndex(index, &removed);
  }
}

// An object by class becomes one inside a chain, a group of rules one inside a list.
void Changes::nest(Json::Value& value) {
  Json::Value outer;
  (isOfRules_ ? outer["rule_list"] : outer["Chain"]["modules"]).append(value);
  value = outer;
}

const Json::Value& Changes::oneOf(const Json::Value& list) {
  return list[static_cast<Json::ArrayIndex>(below(list.size()))];
}

}  // namespace agreement
