// Classes with every kind of field, as modules and as rules, and files of them.
#pragma once

#include <boost/date_time/posix_time/posix_time.hpp>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "libvarrow/libvarrow.h"

namespace agreement {

using boost::gregorian::date;
using boost::posix_time::hours;
using boost::posix_time::milliseconds;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;
using cppbind::Binder;

enum class Order : signed char { lifo = -1, fifo, edd, spt };
constexpr auto enumNames(Order) {
  return cppbind::names<Order>({{Order::fifo, "FIFO"}, {Order::edd, "EDD"}, {Order::edd, "due"}});
}

struct Slot {
  void setBind(Binder* binder, bool) {
    binder->bind("from", from);
    binder->bind("to", to);
    binder->bind("pause", pause, time_duration());
    binder->bind("parts", parts, {});
    if (binder->isReading() && !binder->isDescribing() && from > to.date()) {
      throw cppbind::ParseErrorException("ends before it begins");
    }
  }
  date from;
  ptime to;
  time_duration pause;
  std::vector<Slot> parts;
};

// A field of either kind, without a description.
struct Either {
  Slot slot;
  std::vector<int> list;
};

}  // namespace agreement

template <>
struct cppbind::FieldCodec<agreement::Either> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, agreement::Either& field) {
    try {
      FieldCodec<agreement::Slot>::read(decoder, json, field.slot);
    } catch (const ParseErrorException&) {
      FieldCodec<std::vector<int>>::read(decoder, json, field.list);
    }
  }
  static void write(JsonEncodeBinder&, const agreement::Either&, Json::Value&) {}
};

namespace agreement {

// A module without work; for a rule it is one more function.
template <class Base>
struct Idle : Base {
  virtual void processImp(libvarrow::ModuleData*) {}
};

inline bool isEven(int number) {
  if (number == 10) throw std::runtime_error("is ten");
  return number % 2 == 0;
}

template <class Base>
struct Numbers : Idle<Base> {
  void setBind(Binder* binder, bool) {
    const double infinity = std::numeric_limits<double>::infinity();
    binder->about("Numbers.");
    binder->bind("on", on, true);
    binder->bind("tiny", tiny, 1);
    binder->field("tries", tries)
        .about("-")
        .between(1, 9)
        .about("A \"text\"\n\xC3\xA9.")
        .atMost(300);
    binder->field("even", even, 1).satisfies(&isEven, "must be even");
    binder->bind("count", count, 1);
    binder->bind("large", large, 1);
    binder->field("huge", huge, 1).atLeast(1);
    binder->field("share", share, 0.5f).between(0.1f, 0.3f);
    binder->field("level", level, 0.1f).oneOf({0.1f, 1.5f, 300.0f});
    binder->field("noise", noise, 0.0).between(-infinity, 2.5);
    binder->field("limit", limit).atMost(1000);
  }
  bool on = false;
  signed char tiny = 0;
  int tries = 0, even = 0;
  unsigned short count = 0;
  std::int64_t large = 0;
  std::uint64_t huge = 0;
  float share = 0, level = 0;
  double noise = 0;
  std::optional<unsigned> limit;
};

template <class Base>
struct Texts : Idle<Base> {
  void setBind(Binder* binder, bool) {
    binder->field("rule", rule).oneOf({"SPT", "MWKR"});
    binder->field("name", name).notEmpty();
    binder->field("word", word, "m").atLeast("b").atMost("y");
    binder->bind("mode", mode, Order::fifo);
    binder->field("modes", modes, {}).each().oneOf({Order::edd});
    binder->bind("shared", shared, boost::shared_ptr<std::string>());
    binder->field("tags", tags, {}).each().notEmpty();
    binder->bind("either", either, Either());
  }
  std::string rule, word;
  std::optional<std::string> name;
  Order mode = Order::fifo;
  std::vector<Order> modes;
  boost::shared_ptr<std::string> shared;
  std::set<std::string> tags;
  Either either;
};

template <class Base>
struct Times : Idle<Base> {
  void setBind(Binder* binder, bool) {
    binder->field("day", day, date()).between(date(2023, 12, 9), date(2024, 3, 5));
    binder->field("begin", begin).atLeast(ptime(date(2024, 1, 1)));
    binder->bind("end", end, ptime());
    binder->field("length", length, time_duration()).atMost(hours(26));
    binder->field("lead", lead, time_duration()).between(-hours(1), milliseconds(3500));
    binder->field("late", lead, time_duration()).between(milliseconds(2500), hours(100));
    binder->bind("slots", slots, {});
    binder->bind("shifts", shifts);
  }
  date day;
  std::optional<ptime> begin;
  ptime end;
  time_duration length, lead;
  std::vector<Slot> slots;
  std::optional<std::map<std::string, time_duration>> shifts;
};

template <class Base>
struct Lists : Idle<Base> {
  void setBind(Binder* binder, bool) {
    binder->field("sizes", sizes)
        .notEmpty()
        .about("Boxes.")
        .each()
        .atLeast(1)
        .atMost(5)
        .about("Pieces.");
    binder->field("matrix", matrix, {}).each().notEmpty().each().atLeast(0);
    binder->field("weights", weights, {}).notEmpty().each().between(0, 1);
    binder->field("pair", pair, {}).oneOf({{1, 2}, {2, 1}});
    binder->bind("groups", groups, {});
  }
  std::vector<int> sizes;
  std::vector<std::vector<int>> matrix;
  std::map<std::string, double> weights;
  std::vector<int> pair;
  std::map<std::string, std::set<int>> groups;
};

template <class Base>
struct Chain : Idle<Base> {
  void setBind(Binder* binder, bool) {
    const Json::Value none(Json::arrayValue);
    binder->bind("modules", modules, &none);
    binder->bind("spare", spare, nullptr);
    binder->bind("any", any);
    binder->bind("named", named, {});
  }
  std::vector<boost::shared_ptr<Base>> modules;
  boost::shared_ptr<Base> spare;
  std::optional<boost::shared_ptr<cppbind::Object>> any;
  std::map<std::string, boost::shared_ptr<Base>> named;
};

// A list instead of members.
template <class Base>
struct Whole : Idle<Base> {
  void setBind(Binder* binder, bool) { binder->field(list).notEmpty().each().atMost(180); }
  std::vector<float> list;
};

template <class Base>
struct Bare : Idle<Base> {};

template <class Base>
struct Fragile : Idle<Base> {
  Fragile() { throw std::runtime_error("broken"); }
};

// Its description ends early.
template <class Base>
struct Closed : Idle<Base> {
  void setBind(Binder* binder, bool) {
    binder->bind("limit", limit);
    if (limit < 1) throw std::logic_error("no limit");
    binder->bind("other", limit, 1);
  }
  int limit = 0;
};

// Neither a module nor a rule.
struct Stranger : cppbind::Object {};

template <class Base>
void registerClasses(cppbind::ClassRegister& reg) {
  reg.regClass<Numbers<Base>>("Numbers");
  reg.regClass<Texts<Base>>("Texts");
  reg.regClass<Times<Base>>("Times");
  reg.regClass<Lists<Base>>("Lists");
  reg.regClass<Chain<Base>>("Chain");
  reg.regClass<Whole<Base>>("A/~ <list>");
  reg.regClass<Bare<Base>>("Bare");
  reg.regClass<Fragile<Base>>("Fragile");
  reg.regClass<Closed<Base>>("Closed");
  reg.regClass<Stranger>("Stranger");
}

inline libvarrow::ModuleLoader newLoader() {
  libvarrow::ModuleLoader loader;
  registerClasses<libvarrow::Module>(loader.classRegister());
  return loader;
}

// The keys tell the layout.
inline void loadPipeline(const Json::Value& file) {
  libvarrow::ModuleLoader loader = newLoader();
  switch (libvarrow::pipelineLayout(file).value_or(libvarrow::PipelineLayout::Chain)) {
    case libvarrow::PipelineLayout::Chain:
      delete loader.loadChainedModule(file);
      break;
    case libvarrow::PipelineLayout::Named:
      loader.loadJson(file);
      break;
    case libvarrow::PipelineLayout::Object:
      loader.loadJsonV2(file, &loader.classRegister());
  }
}

// An object of each class that can be created.
constexpr const char* kObjects = R"([
    {"Numbers": {"on": false, "tiny": -128, "tries": 9, "even": 4, "count": 65535,
        "large": -9223372036854775808, "huge": 18446744073709551615, "share": 0.3, "level": 1.5,
        "noise": -1, "limit": null}},
    {"Texts": {"rule": "SPT", "name": "n", "word": "word", "mode": "EDD", "modes": ["EDD", "due"],
        "shared": "text", "tags": ["x", "x", "y"], "either": [1, 2]}},
    {"Times": {"day": "2024-03-05", "begin": "2024-02-29 23:59:59", "end": "1999-12-31 07:00:00",
        "length": "25:59:59", "lead": "00:00:03", "late": "00:00:03", "shifts": {"early": "08:00:00"},
        "slots": [{"from": "2024-03-05", "to": "2024-03-06 07:00:00", "pause": "01:00:00",
                   "parts": [{"from": "2024-03-05", "to": "2024-03-05 00:00:00"}]}]}},
    {"Lists": {"sizes": [1, 5], "matrix": [[1], [2, 3]], "weights": {"a": 1, "b": 0.25},
        "pair": [2, 1], "groups": {"g": [3, 3]}}},
    {"Chain": {}}, {"A/~ <list>": [60, 60.5]}, {"Bare": null}, {"Closed": {"limit": 1, "other": 2}}])";

}  // namespace agreement
