// Classes and records for tests.
#pragma once

#include <any>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/make_shared.hpp>

#include "agreement/classes.h"
#include "support/support.h"

namespace cppbind_test {

using namespace cppbind;
using namespace boost::posix_time;
using namespace test_support;
using agreement::Order;
using boost::gregorian::date;

/// A record that contains itself.
struct Slot {
  int machine = 3;
  double load = 0;
  std::vector<Slot> parts;
  void setBind(Binder* binder, bool) {
    binder->bind("machine", machine);
    binder->bind("load", load, 0.5);
    binder->bind("parts", parts, {});
  }
};

struct Step : Object {};
using StepPtr = boost::shared_ptr<Step>;
using StepList = std::vector<StepPtr>;

struct Wait : Step {
  time_duration length;
  void setBind(Binder* binder, bool) { binder->bind("length", length, hours(1)); }
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

struct Classes : ClassRegister {
  Classes() {
    regClass<Group>("Group");
    regClass<Step>("Step");
    regClass<Wait>("Wait");
    regClass<Broken<std::bad_any_cast>>("Broken");
    regClass<Object>("Other");
  }
};

}  // namespace cppbind_test
