// Conditions on fields, and the kinds of fields that need no codec of a host.
#include "cppbind/Field.h"

#include <cmath>
#include <functional>

#include "cppbind/classes.h"

namespace cppbind_test {
namespace {

struct Host {
  int value = 0;
};

}  // namespace
}  // namespace cppbind_test

// Of a host: it wins over the kinds of the library.
template <>
struct cppbind::FieldCodec<std::optional<cppbind_test::Host>> {
  using Field = std::optional<cppbind_test::Host>;
  static void read(JsonDecodeBinder&, const Json::Value& json, Field& field) {
    field = cppbind_test::Host{json.asInt() + 1};
  }
  static void write(JsonEncodeBinder&, const Field& field, Json::Value& json) {
    json = field->value;
  }
};

namespace cppbind_test {
namespace {

// An object whose only field is bound by a function.
template <class T>
struct One {
  using Bind = std::function<void(Binder&, T&)>;
  Bind bind;
  T value{};
  void setBind(Binder* binder, bool) { bind(*binder, value); }
};

template <class T>
using Declare = std::function<void(Field<T>&)>;

// What the JSON reads as, as it is written again; or the error.
template <class T>
std::string reread(const std::string& text, const typename One<T>::Bind& bind) {
  One<T> one{bind};
  try {
    JsonDecodeBinder().decode(json(text), one);
  } catch (const std::exception& error) {
    return error.what();
  }
  std::string written = Json::FastWriter().write(JsonEncodeBinder().encode(one));
  return written.substr(0, written.size() - 1);
}

template <class T>
std::string read(const std::string& value, const Declare<T>& declare) {
  return reread<T>(R"({"f":)" + value + "}", [&](Binder& binder, T& field) {
    Field<T> handle = binder.field("f", field);
    declare(handle);
  });
}

bool isEven(int value) {
  return value % 2 == 0;
}

TEST(Field, AValueThatBreaksItsConditionIsRefusedAtItsPath) {
  const auto ints = [](auto&& f) { return Declare<int>(f); };
  const Declare<int> fromOneToFive = ints([](auto& f) { f.between(1, 5); });
  EXPECT_EQ("f: 0 is less than 1", read<int>("0", fromOneToFive));
  EXPECT_EQ("f: 6 is more than 5", read<int>("6", fromOneToFive));
  EXPECT_EQ("f: 3 is not one of 2, 4", read<int>("3", ints([](auto& f) { f.oneOf({2, 4}); })));
  EXPECT_EQ("f: 3 is not allowed: oneOf() has no values",
            read<int>("3", ints([](auto& f) { f.oneOf(std::vector<int>()); })));
  EXPECT_EQ("f: must be even",
            read<int>("3", ints([](auto& f) { f.satisfies(isEven, "must be even"); })));
  EXPECT_EQ(R"({"f":4})",
            read<int>("4", ints([](auto& f) {
                        f.satisfies([](int v) { return v > 3; }, "must be large").oneOf({2, 4});
                      })));
  EXPECT_EQ("f: 0.1 is more than 0.01", read<double>("0.1", [](auto& f) { f.atMost(0.01); }));
  EXPECT_EQ("f: 1e+300 is more than 100000",
            read<double>("1e300", [](auto& f) { f.atMost(100000); }));
  const std::vector<std::string> rules = {"SPT", "MWKR"};
  EXPECT_EQ(R"(f: "FOO" is not one of "SPT", "MWKR")",
            read<std::string>(R"("FOO")", [&](auto& f) { f.oneOf(rules); }));
  EXPECT_EQ("f: is empty", read<std::string>(R"("")", [](auto& f) { f.notEmpty(); }));
  const auto soon = [](auto& f) { f.atLeast(date(2024, 3, 5)); };
  EXPECT_EQ(R"(f: "2024-03-04" is less than "2024-03-05")", read<date>(R"("2024-03-04")", soon));
  EXPECT_EQ(R"(f: "not-a-date-time" is less than "2024-03-05")",
            read<date>(R"("not-a-date-time")", soon));
  EXPECT_EQ(
      R"(f: "not-a-date-time" is more than "2024-03-05 00:00:00")",
      read<ptime>(R"("not-a-date-time")", [](auto& f) { f.atMost(ptime(date(2024, 3, 5))); }));
  EXPECT_EQ(R"(f: "00:00:01" is more than "-100:00:00.25")",
            read<time_duration>(R"("00:00:01")",
                                [](auto& f) { f.atMost(-hours(100) - milliseconds(250)); }));
  EXPECT_EQ(R"(f: "b" is less than "c")",
            read<boost::shared_ptr<std::string>>(R"("b")", [](auto& f) { f.atLeast("c"); }));
}

TEST(Field, ErrorsOfEachNameTheElement) {
  const auto positive = [](auto& f) { f.notEmpty().each().atLeast(1); };
  EXPECT_EQ("f[1]: 0 is less than 1", read<std::vector<int>>("[3, 0, -1]", positive));
  EXPECT_EQ("f: is empty", read<std::vector<int>>("[]", positive));
  // Sets have another order than the file, and lose duplicates.
  EXPECT_EQ("f[3]: 0 is less than 1", read<std::set<int>>("[5, 5, 3, 0]", positive));
  EXPECT_EQ("f.night: 0 is less than 1",
            (read<std::map<std::string, int>>(R"({"day": 2, "night": 0})", positive)));
  EXPECT_EQ("f[1]: 0 is less than 1",
            (read<std::vector<std::optional<int>>>("[null, 0]", positive)));
  EXPECT_EQ("f[1].a[2]: 7 is more than 5", (read<std::vector<std::map<std::string, std::set<int>>>>(
                                               R"([{}, {"a": [1, 1, 7]}])", [](auto& f) {
                                                 f.each().each().notEmpty().each().atMost(5);
                                               })));
  EXPECT_EQ("f[1]: is true", (read<std::vector<bool>>("[false, true]", [](auto& f) {
              f.each().satisfies([](bool v) { return !v; }, "is true");
            })));
  EXPECT_EQ("f[1]: stoi", read<std::vector<std::string>>(R"(["1", ""])", [](auto& f) {
              f.each().satisfies([](const std::string& v) { return std::stoi(v) > 0; }, "");
            }));
}

TEST(Field, DefaultsAndEmptyValuesAreNotChecked) {
  const auto bind = [](Binder& binder, int& f) { binder.field("f", f, 0).atLeast(1); };
  EXPECT_EQ(R"({"f":0})", reread<int>("{}", bind));
  EXPECT_EQ(R"({"f":0})", reread<int>(R"({"f": null})", bind));
  EXPECT_EQ("f: 0 is less than 1", reread<int>(R"({"f": 0})", bind));
  const auto positive = [](auto& f) { f.atLeast(1); };
  EXPECT_EQ(R"({"f":null})", read<std::optional<int>>("null", positive));
  EXPECT_EQ("f: 0 is less than 1", read<std::optional<int>>("0", positive));
  EXPECT_EQ("f: not found", read<int>("null", positive));

  // No JSON is NaN, but a host's codec may read it.
  EXPECT_EQ("f: NaN is less than 0", reread<double>(R"({"f": 1})", [](Binder& binder, double& f) {
              Field<double> field = binder.field("f", f);
              f = std::nan("");
              field.atLeast(0);
            }));
}

TEST(Field, AWholeValueHasNoKeyInItsPath) {
  const auto bind = [](Binder& binder, std::vector<int>& f) {
    binder.field(f).notEmpty().each().atLeast(1);
  };
  EXPECT_EQ("[1]: 0 is less than 1", reread<std::vector<int>>("[1, 0]", bind));
  EXPECT_EQ("is empty", reread<std::vector<int>>("[]", bind));
  EXPECT_EQ("not found", reread<std::vector<int>>("null", bind));
}

TEST(Field, CodecsOfAHostWin) {
  const auto plain = [](const char* text) {
    return reread<std::optional<Host>>(
        text, [](Binder& binder, std::optional<Host>& f) { binder.bind("f", f); });
  };
  EXPECT_EQ(R"({"f":4})", plain(R"({"f": 3})"));
  EXPECT_EQ("f: not found", plain("{}"));
}

}  // namespace
}  // namespace cppbind_test
