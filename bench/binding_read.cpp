// Reading objects from parsed JSON: a setBind against the JSON library's calls written by hand.
#include <benchmark/benchmark.h>
#include <json/value.h>

#include <boost/date_time/posix_time/conversion.hpp>
#include <ctime>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "operations.h"

namespace bench {

namespace {

const Json::Value& sampleJson() {
  static const Json::Value json = cppbind::JsonEncodeBinder().encode(samplePlan());
  return json;
}

void require(bool condition, const char* complaint) {
  if (!condition) throw std::runtime_error(complaint);
}

const Json::Value& memberOf(const Json::Value& object, std::string_view key) {
  const Json::Value* member = object.find(key.data(), key.data() + key.size());
  require(member != nullptr && !member->isNull(), "not found");
  return *member;
}

boost::posix_time::ptime timeByStrptime(const char* text) {
  std::tm parts{};
  const char* end = strptime(text, kTimeFormat, &parts);
  require(end != nullptr && *end == '\0', "no time");
  return boost::posix_time::ptime_from_tm(parts);
}

// All five keys are required, so a sixth would be an unknown one.
Operation operationByHand(const Json::Value& json) {
  require(json.isObject(), "no object");
  const Json::Value& id = memberOf(json, "id");
  const Json::Value& hours = memberOf(json, "hours");
  const Json::Value& machine = memberOf(json, "machine");
  const Json::Value& start = memberOf(json, "start");
  const Json::Value& isFixed = memberOf(json, "fixed");
  require(json.size() == 5, "unknown key");
  require(id.isInt(), "no int");
  require(hours.isDouble(), "no double");
  require(machine.isString(), "no string");
  require(start.isString(), "no string");
  require(isFixed.isBool(), "no bool");
  return {id.asInt(), hours.asDouble(), machine.asString(), timeByStrptime(start.asCString()),
          isFixed.asBool()};
}

Plan planByHand(const Json::Value& json) {
  require(json.isObject(), "no object");
  const Json::Value& list = memberOf(json, "operations");
  require(json.size() == 1, "unknown key");
  require(list.isArray(), "no array");
  Plan plan;
  plan.operations.reserve(list.size());
  for (const Json::Value& operation : list) plan.operations.push_back(operationByHand(operation));
  return plan;
}

Plan planBySetBind(const Json::Value& json) {
  Plan plan;
  cppbind::JsonDecodeBinder().decode(json, plan);
  return plan;
}

template <Plan (*read)(const Json::Value&)>
void readPlan(benchmark::State& state) {
  if (!(read(sampleJson()).operations == samplePlan().operations)) {
    return state.SkipWithError("not the plan that was written");
  }
  for (auto _ : state) {
    Plan plan = read(sampleJson());
    benchmark::DoNotOptimize(plan);
  }
}

BENCHMARK(readPlan<planBySetBind>)->Name("binding_read/set_bind")->Unit(benchmark::kMicrosecond);
BENCHMARK(readPlan<planByHand>)
    ->Name("binding_read/jsoncpp_strptime")
    ->Unit(benchmark::kMicrosecond);

// An object with many fields: the parts of one record that code has written.
struct WideRecord {
  explicit WideRecord(std::size_t fieldCount) : fields(fieldCount) {
    for (std::size_t i = 0; i < fieldCount; ++i) keys.push_back("field_" + std::to_string(i));
  }
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    for (std::size_t i = 0; i < keys.size(); ++i) binder->bind(keys[i], fields[i]);
  }

  std::vector<std::string> keys;
  std::vector<int> fields;
};

void readWideBySetBind(const Json::Value& json, WideRecord& record) {
  cppbind::JsonDecodeBinder().decode(json, record);
}

void readWideByHand(const Json::Value& json, WideRecord& record) {
  require(json.size() == record.keys.size(), "unknown key");
  for (std::size_t i = 0; i < record.keys.size(); ++i) {
    const Json::Value& member = memberOf(json, record.keys[i]);
    require(member.isInt(), "no int");
    record.fields[i] = member.asInt();
  }
}

template <void (*read)(const Json::Value&, WideRecord&)>
void readWide(benchmark::State& state) {
  WideRecord record(static_cast<std::size_t>(state.range(0)));
  Json::Value json(Json::objectValue);
  for (std::size_t i = 0; i < record.keys.size(); ++i) json[record.keys[i]] = static_cast<int>(i);
  for (auto _ : state) {
    read(json, record);
    benchmark::DoNotOptimize(record.fields.back());
  }
  if (record.fields.back() + 1 != state.range(0)) state.SkipWithError("not what was written");
}

BENCHMARK(readWide<readWideBySetBind>)
    ->Name("binding_wide/set_bind")
    ->RangeMultiplier(10)
    ->Range(100, 100000);
BENCHMARK(readWide<readWideByHand>)
    ->Name("binding_wide/jsoncpp")
    ->RangeMultiplier(10)
    ->Range(100, 100000);

}  // namespace

}  // namespace bench
