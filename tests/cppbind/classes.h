// Classes with every kind of field, and the texts of faults.
#pragma once

#include <any>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/make_shared.hpp>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "cppbind/cppbind.h"
#include "support/support.h"

namespace cppbind_test {

using namespace cppbind;
using namespace boost::posix_time;
using namespace test_support;
using boost::gregorian::date;

enum class Order : signed char { lifo = -1, fifo, edd, spt };
constexpr auto enumNames(Order) {
  return names<Order>({{Order::fifo, "FIFO"}, {Order::edd, "EDD"}, {Order::edd, "due"}});
}

/// A record that contains itself.
struct Slot {
  int machine = 3;
  double load = 0;
  std::vector<Slot> parts;
  void setBind(Binder* binder, bool) {
    binder->about("A slot.");
    binder->field("machine", machine).about("A \"machine\"\n\xC3\xA9.");
    binder->bind("load", load, 0.5);
    binder->bind("parts", parts, {});
  }
};

struct Step : Object {};
using StepPtr = boost::shared_ptr<Step>;
using StepList = std::vector<StepPtr>;

struct Wait : Step {
  time_duration length;
  void setBind(Binder* binder, bool) {
    binder->about("Waits.");
    binder->bind("length", length, hours(1));
  }
};

/// Its description ends before the last key.
struct Strict : Wait {
  int limit = 0;
  void setBind(Binder* binder, bool bindFields) {
    Wait::setBind(binder, bindFields);
    binder->about("Has a limit.");
    binder->bind("limit", limit);
    if (limit < 1) {
      throw ParseErrorException("limit", binder->isDescribing() ? "not read" : "too small");
    }
    binder->bind("later", limit);
  }
};

/// Its value is a list. A virtual base is found, too.
struct Numbers : virtual Step {
  std::vector<float> numbers;
  void setBind(Binder* binder, bool) { binder->field(numbers).notEmpty().each().atMost(180); }
};

struct Group : Step {
  struct Data4Bind {
    StepList steps;
    StepPtr spare;
    void setBind(Binder* binder, bool) {
      binder->bind("steps", steps);
      binder->bind("spare", spare, nullptr);
    }
  };
  explicit Group(const Data4Bind& record) : data(record) {}
  Data4Bind getData4Bind() const { return data; }
  Data4Bind data;
};

template <class Error>
struct Broken : Step {
  Broken() { throw Error(); }
};

struct Everything : Step {
  bool on = false;
  unsigned char count = 0;
  std::uint64_t large = 0;
  float share = 0;
  double noise = 0;
  std::optional<std::string> name;
  std::string rule;
  date day;
  ptime begin;
  time_duration length;
  std::optional<Order> order;
  std::vector<Order> orders;
  std::map<std::string, std::set<int>> sizes;
  std::map<std::string, Slot> slots;
  std::optional<std::vector<Slot>> more;
  StepPtr step, spare;
  StepList steps;

  void setBind(Binder* binder, bool) {
    const double infinity = std::numeric_limits<double>::infinity();
    const auto isShort = [](const auto& container) { return container.size() < 9; };
    const Json::Value noSteps(Json::arrayValue);
    binder->bind("on", on);
    binder->field("count", count, 7).about("early").between(1, 9).atMost(200).about("How many.");
    binder->bind("large", large, 7);
    binder->field("share", share, 0.1f).oneOf({0.1f, 1.5f, 300.0f});
    binder->field("noise", noise).between(-infinity, 2.5);
    binder->field("name", name).notEmpty();
    binder->field("rule", rule).oneOf({"x", "EDD", ""}).oneOf({"EDD", ""});
    binder->field("day", day).between(date(2023, 12, 9), date(2024, 3, 5));
    binder->bind("begin", begin);
    binder->field("length", length, hours(25)).atMost(hours(26)).about("Until the end.");
    binder->field("order", order).oneOf({Order::edd});
    binder->bind("orders", orders, {Order::edd});
    binder->field("sizes", sizes).notEmpty().each().notEmpty().each().atLeast(0).about("Pieces.");
    binder->field("slots", slots, {}).satisfies(isShort, "few");
    binder->bind("more", more);
    binder->bind("step", step);
    // Not created by name: it has no JSON form.
    binder->bind("spare", spare, boost::make_shared<Wait>());
    binder->bind("steps", steps, &noSteps);
  }
};

struct Classes : ClassRegister {
  Classes() {
    regClass<Everything>("Everything");
    regClass<Group>("Group");
    regClass<Numbers>("A/~ <list>");
    regClass<Strict>("Strict");
    regClass<Step>("Step");
    regClass<Wait>("Wait");
    regClass<Broken<std::bad_any_cast>>("Broken");
    regClass<Object>("Other");
  }
};

}  // namespace cppbind_test
