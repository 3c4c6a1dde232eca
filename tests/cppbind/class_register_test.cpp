// Classes by name.
#include "cppbind/ClassRegister.h"

#include <gtest/gtest.h>

#include <csignal>

#include "cppbind/cppbind.h"
#include "support/ChildProcess.h"
#include "support/errors.h"
#include "support/json.h"

namespace cppbind_test {

using namespace cppbind;
using test_support::errorOf;
using test_support::json;
using test_support::runInChild;

struct Shape : Object {};

struct Square : Shape {
  std::string label;
  Square() = default;
  Square(const Square&) = delete;  // created in place
  void setBind(Binder* binder, bool) { binder->bind("label", label, "none"); }
};

struct Plain : Object {};

// Read through a record, and not default-constructible.
struct Recorded : Object {
  struct Data4Bind {
    int size = 0;
    void setBind(Binder* binder, bool) { binder->bind("size", size); }
  };
  explicit Recorded(const Data4Bind& record) : data(record) {}
  const Data4Bind& getData4Bind() const { return data; }
  Data4Bind data;
};

class ClassRegisterTest : public testing::Test {
 protected:
  ClassRegisterTest() {
    reg.regClass<Square>("Square", json(R"({"color": "red"})"));
    reg.regClass<Plain>("Plain");
    reg.regClass<Recorded>("Recorded");
  }
  ClassRegister reg;
};

TEST_F(ClassRegisterTest, ObjectsRememberTheirMakingAndTheNameGivenInAnyCase) {
  for (const char* name : {"Square", "square", "SQUARE"}) {
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

TEST_F(ClassRegisterTest, AClassWithARecordIsConstructedFromItAndWrittenThroughIt) {
  const std::unique_ptr<Recorded> made(reg.create<Recorded>("Recorded", json(R"({"size": 3})")));
  EXPECT_EQ(3, made->data.size);
  EXPECT_EQ(json(R"({"Recorded": {"size": 3}})"), made->getJsonValue4Bind());
}

TEST_F(ClassRegisterTest, AnUnknownClassIsPrintedAndFailuresNameTheClass) {
  testing::internal::CaptureStdout();
  EXPECT_EQ("HexaGon miss register", errorOf([&] { reg.create("HexaGon", Json::Value()); }));
  EXPECT_EQ("ERROR can not find class 'HexaGon'\n", testing::internal::GetCapturedStdout());
  EXPECT_EQ("Plain miss register", errorOf([&] { reg.create<Shape>("Plain", Json::Value()); }));
  EXPECT_THROW(reg.create<Shape>("Plain", Json::Value()), ClassMissRegException);
  EXPECT_EQ("Square.label: Value is not convertible to string.",
            errorOf([&] { reg.create("Square", json(R"({"label": 5})")); }));
  EXPECT_EQ("Plain: unknown json key:[label]",
            errorOf([&] { reg.create("Plain", json(R"({"label": 5})")); }));
}

TEST_F(ClassRegisterTest, ASecondClassUnderANameAndANullFactoryEndTheProcess) {
  const auto taken = runInChild([this] { reg.regClass<Plain>("SQUARE"); });
  EXPECT_EQ(SIGABRT, taken.signal);
  EXPECT_EQ("Error square alread registered cppbind_test::Square when register cppbind_test::Plain",
            taken.output);
  EXPECT_NE(std::string::npos, taken.errors.find("Assertion `false' failed"));
  const auto none = runInChild([this] { reg.regClass("No", boost::shared_ptr<ObjFactory>()); });
  EXPECT_EQ(SIGABRT, none.signal);
  EXPECT_NE(std::string::npos, none.errors.find("px != 0"));
}

TEST(ObjectTest, AnObjectNotCreatedByNameHasItsTypeNameAndNoJson) {
  const Square square;
  EXPECT_EQ("cppbind_test::Square", square.dumpStr());
  EXPECT_TRUE(square.getBaiscInfoJson().isNull());
  const auto child = runInChild([&] { static_cast<void>(square.getJsonValue4Bind()); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_NE(std::string::npos, child.errors.find("cppbind/Object.h"));
}

}  // namespace cppbind_test
