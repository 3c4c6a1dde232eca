// Writing objects as a JSON tree: a setBind against the JSON library's calls written by hand.
#include <benchmark/benchmark.h>
#include <json/value.h>

#include <boost/date_time/posix_time/conversion.hpp>
#include <ctime>

#include "operations.h"

namespace bench {

namespace {

Json::Value treeBySetBind(const Plan& plan) {
  return cppbind::JsonEncodeBinder().encode(plan);
}

/// `Key` is the type of the member names: the JSON library copies a plain text and stores a
/// Json::StaticString by its address.
template <class Key>
Json::Value treeByHand(const Plan& plan) {
  Json::Value json(Json::objectValue);
  Json::Value& list = json[Key("operations")];
  list = Json::Value(Json::arrayValue);
  for (const Operation& operation : plan.operations) {
    Json::Value& object = list.append(Json::Value(Json::objectValue));
    object[Key("id")] = operation.id;
    object[Key("hours")] = operation.hours;
    object[Key("machine")] = operation.machine;
    const std::tm parts = boost::posix_time::to_tm(operation.start);
    char text[20];
    std::strftime(text, sizeof text, kTimeFormat, &parts);
    object[Key("start")] = text;
    object[Key("fixed")] = operation.isFixed;
  }
  return json;
}

using PlainText = const char*;

template <Json::Value (*write)(const Plan&)>
void writePlan(benchmark::State& state) {
  if (write(samplePlan()) != treeBySetBind(samplePlan())) {
    return state.SkipWithError("not the tree that setBind gives");
  }
  for (auto _ : state) {
    Json::Value json = write(samplePlan());
    benchmark::DoNotOptimize(json);
  }
}

BENCHMARK(writePlan<treeBySetBind>)->Name("binding_write/set_bind")->Unit(benchmark::kMicrosecond);
BENCHMARK(writePlan<treeByHand<PlainText>>)
    ->Name("binding_write/jsoncpp_strftime")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(writePlan<treeByHand<Json::StaticString>>)
    ->Name("binding_write/jsoncpp_static_keys")
    ->Unit(benchmark::kMicrosecond);

}  // namespace

}  // namespace bench
