// The reference of classes in Markdown, and the faults in what they declare.
#include <boost/date_time/posix_time/posix_time.hpp>
#include <limits>
#include <map>
#include <optional>
#include <set>

#include "cppbind/cppbind.h"
#include "support/support.h"

namespace reference_test {

using namespace cppbind;
using test_support::json;

enum class Order : signed char { lifo = -1, fifo, edd, spt };
constexpr auto enumNames(Order) {
  return names<Order>({{Order::fifo, "FIFO"}, {Order::edd, "EDD"}});
}
enum Old { kOne = 1, kTwo, kThree };
constexpr auto enumNames(Old) {
  return names<Old>({{kOne, "one"}, {kThree, "three"}});
}

struct Slot {
  Old old = kOne;
  void setBind(Binder* binder, bool) { binder->bind("a|b", old, kOne); }
};

struct Faulty : Object {
  int number = 0;
  double share = 0;
  std::string rule;
  Order order = Order::fifo;
  boost::gregorian::date day;
  std::set<unsigned char> sizes;
  std::vector<Slot> slots;
  std::vector<boost::shared_ptr<Faulty>> others;

  void setBind(Binder* binder, bool) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    binder->about("All is wrong.");
    binder->field("low", number, 0).atLeast(1).about("As <low>\nas possible.");
    binder->field("high", number).atLeast(5).atMost(1);
    binder->field("nan", share).atMost(nan);
    binder->field("rule", rule).oneOf(std::vector<std::string>());
    binder->field("none", rule).oneOf({"", "b"}).notEmpty().atLeast("c");
    binder->field("day", day).atMost(boost::gregorian::date(2024, 3, 4)).oneOf({});
    binder->bind("order", order);
    binder->field("sizes", sizes, {1, 3}).each().satisfies([](int n) { return n < 3; }, "below 3");
    binder->bind("slots", slots, {});
    binder->bind("others", others);
    throw std::runtime_error("no more");
  }
};

struct Sound : Object {
  std::optional<float> share;
  std::map<std::string, boost::posix_time::ptime> times;
  Slot slot;
  void setBind(Binder* binder, bool) {
    binder->field("share", share, 0.1f).between(0.1f, 0.7f);
    binder->field("times", times).notEmpty().each().about("Begin.");
    binder->bind("slot", slot);
  }
};
struct Plain : Object {};

TEST(DescriptionFaults, AreFoundInAllClasses) {
  ClassRegister reg;
  reg.regClass<Faulty>("Faulty");
  reg.regClass<Sound>("Sound");
  const std::vector<std::string> expected = {
      "Faulty: incomplete: no more",
      "Faulty.low: default 0: 0 is less than 1",
      "Faulty.high: no value is at least 5, at most 1",
      "Faulty.nan: no value is at most NaN",
      "Faulty.rule: no value is allowed",
      "Faulty.none: no value is one of \"\", \"b\", not empty, at least \"c\"",
      "Faulty.day: no value is allowed",
      "Faulty.order: lifo has no name",
      "Faulty.order: spt has no name",
      "Faulty.sizes: default [1, 3]: [1]: below 3",
      "reference_test::Slot.a|b: kTwo has no name"};
  EXPECT_EQ(expected, descriptionFaults(reg));
}

TEST(MarkdownReference, HasASectionForEachClass) {
  ClassRegister reg;
  reg.regClass<Faulty>("Faulty");
  reg.regClass<Sound>("Sound");
  reg.regClass<Plain>("Plain");
  EXPECT_EQ(R"(## Classes

### Faulty

All is wrong.

This description is incomplete: no more

| Key | Value | Default | Meaning |
|---|---|---|---|
| `low` | integer (at least 1) | `0` | As &lt;low> as possible. |
| `high` | integer (at least 5, at most 1) | required |  |
| `nan` | number (at most NaN) | required |  |
| `rule` | text (no value is allowed) | required |  |
| `none` | text (one of "", "b", not empty, at least "c") | required |  |
| `day` | date such as `"2024-03-05"` (at most "2024-03-04", no value is allowed) | required |  |
| `order` | one of `"FIFO"`, `"EDD"` | required |  |
| `sizes` | set, as a list, of integer from 0 to 255 (below 3) | `[1, 3]` |  |
| `slots` | list of `reference_test::Slot` | `[]` |  |
| `others` | list of object of class `Faulty` | required |  |

### Plain

It has no keys.

### Sound

| Key | Value | Default | Meaning |
|---|---|---|---|
| `share` | number (at least 0.1, at most 0.7) or null | `0.1` |  |
| `times` | object with any keys of time such as `"2024-03-05 07:08:09"` (not empty) | required | Each: Begin. |
| `slot` | `reference_test::Slot` | required |  |

## Records

### reference_test::Slot

| Key | Value | Default | Meaning |
|---|---|---|---|
| `a\|b` | one of `"one"`, `"three"` | `"one"` |  |
)",
            markdownReference(describe(reg)));
}

}  // namespace reference_test
