// Classes by name.
#include "cppbind/ClassRegister.h"

#include "cppbind/classes.h"

namespace cppbind_test {

struct Shape : Object {};

struct Square : Shape {
  std::string label;
  Square() = default;
  Square(const Square&) = delete;  // created in place
  void setBind(Binder* binder, bool) { binder->bind("label", label, "none"); }
};

struct Family : Object {
  std::vector<boost::shared_ptr<Object>> members;
  std::vector<int> sizes;
  void setBind(Binder* binder, bool) {
    const Json::Value none = json(R"([{"Square": {"label": "default"}}])");
    binder->bind("members", members, &none);
    binder->bind("sizes", sizes, {});
  }
};

class ClassRegisterTest : public testing::Test {
 protected:
  ClassRegisterTest() {
    reg.regClass<Square>("Square", json(R"({"color": "red"})"));
    reg.regClass<Step>("Plain");
    reg.regClass<Family>("Family");
  }
  ClassRegister reg;
};

TEST_F(ClassRegisterTest, ObjectsKeepTheNameAndTheJsonOfTheirCreation) {
  for (const char* name : {"Square", "SQUARE"}) {
    const std::unique_ptr<Shape> square(reg.create<Shape>(name, json(R"({"label": "a"})")));
    EXPECT_EQ(name, square->dumpStr());
    EXPECT_EQ(json(R"({"label": "a"})"), square->getJsonValue4Bind()[name]);
    EXPECT_EQ(json(R"({"baseProperty": {"color": "red"}, "originParameter": {"label": "a"}})"),
              square->getBaiscInfoJson());
  }
  const std::unique_ptr<Object> plain(reg.create("Plain", Json::Value()));
  EXPECT_EQ(json(R"({"baseProperty": null, "originParameter": null})"), plain->getBaiscInfoJson());
  EXPECT_EQ(json(R"({"Plain": {}})"), plain->getJsonValue4Bind());
}

TEST_F(ClassRegisterTest, NestedObjectsKeepTheirJsonAfterTheOuterOne) {
  const auto origin = [](const Object& object) {
    return object.getBaiscInfoJson()["originParameter"];
  };
  const Json::Value inner = json(R"({"sizes": [1]})");
  Json::Value fields = json(R"({"members": [{"Family": {}}, {"Square": {"label": "b"}}]})");
  fields["members"][0]["Family"] = inner;
  JsonDecodeBinder binder(&reg);
  std::unique_ptr<Family> group(reg.create<Family>("Family", fields, &binder));
  EXPECT_EQ(fields, origin(*group));
  const auto members = group->members;
  group.reset();
  fields.clear();
  EXPECT_EQ(inner, origin(*members[0]));
  EXPECT_EQ(json(R"({"label": "b"})"), origin(*members[1]));
  EXPECT_EQ(json(R"({"label": "default"})"),
            origin(*dynamic_cast<Family&>(*members[0]).members[0]));
}

TEST_F(ClassRegisterTest, ASecondClassUnderANameEndsTheProcess) {
  const auto taken = runInChild([this] { reg.regClass<Step>("SQUARE"); });
  EXPECT_EQ(SIGABRT, taken.signal);
  EXPECT_EQ("Error square alread registered cppbind_test::Square when register cppbind_test::Step",
            taken.output);
  EXPECT_TRUE(contains(taken.errors, "Assertion `false' failed"));
}

TEST(ObjectTest, AnObjectNotCreatedByNameHasItsTypeNameAndNoJson) {
  const Square square;
  EXPECT_EQ("cppbind_test::Square", square.dumpStr());
  EXPECT_TRUE(square.getBaiscInfoJson().isNull());
  expectAbort("cppbind/Object.h", [&] { static_cast<void>(square.getJsonValue4Bind()); });
}

template <class T>
struct Box {};
struct Underclass {};

TEST(ObjectTest, NamesOfTypesHaveNoKeywords) {
  EXPECT_EQ("cppbind_test::Box<cppbind_test::Square>", typeName(typeid(Box<Square>)));
}

}  // namespace cppbind_test
