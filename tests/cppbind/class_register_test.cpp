// Classes by name.
#include "cppbind/ClassRegister.h"

#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <csignal>

#include "cppbind/cppbind.h"
#include "support/ChildProcess.h"
#include "support/json.h"

namespace cppbind_test {

using namespace cppbind;
using test_support::json;

struct Shape : Object {
  int sides = 0;
};

struct Square : Shape {
  std::string label;
  Square() { sides = 4; }
  Square(const Square&) = delete;  // created in place
  void setBind(Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("label", label, "none");
  }
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

TEST_F(ClassRegisterTest, NamesAreMatchedWithoutRegardToCase) {
  for (const char* name : {"Square", "square", "SQUARE"}) {
    const std::unique_ptr<Shape> shape(reg.create<Shape>(name, Json::Value()));
    EXPECT_EQ(4, shape->sides);
    EXPECT_EQ(name, shape->dumpStr()) << "it answers with the name it was created under";
  }
}

TEST_F(ClassRegisterTest, ACreatedObjectWritesItselfBackAndRemembersItsMaking) {
  const std::unique_ptr<Object> square(reg.create("squarE", json(R"({"label": "a"})")));
  EXPECT_EQ(json(R"({"squarE": {"label": "a"}})"), square->getJsonValue4Bind());
  EXPECT_EQ(json(R"({"baseProperty": {"color": "red"}, "originParameter": {"label": "a"}})"),
            square->getBaiscInfoJson());
  const std::unique_ptr<Object> plain(reg.create("Plain", Json::Value()));
  EXPECT_EQ(json(R"({"baseProperty": null, "originParameter": null})"), plain->getBaiscInfoJson());
  EXPECT_EQ(json(R"({"Plain": {}})"), plain->getJsonValue4Bind());
}

TEST_F(ClassRegisterTest, AClassWithARecordIsConstructedFromItAndWrittenThroughIt) {
  const std::unique_ptr<Recorded> made(reg.create<Recorded>("Recorded", json(R"({"size": 3})")));
  EXPECT_EQ(3, made->data.size);
  EXPECT_EQ(json(R"({"Recorded": {"size": 3}})"), made->getJsonValue4Bind());
}

TEST_F(ClassRegisterTest, AnUnknownClassIsPrintedAsGivenAndThrows) {
  testing::internal::CaptureStdout();
  try {
    reg.create("HexaGon", Json::Value());
    ADD_FAILURE();
  } catch (const ClassMissRegException& error) {
    EXPECT_STREQ("HexaGon miss register", error.what());
  }
  EXPECT_EQ("ERROR can not find class 'HexaGon'\n", testing::internal::GetCapturedStdout());
}

TEST_F(ClassRegisterTest, AnObjectOfAnotherKindCountsAsMissing) {
  try {
    reg.create<Shape>("Plain", Json::Value());
    ADD_FAILURE();
  } catch (const ClassMissRegException& error) {
    EXPECT_EQ("Plain miss register", error.message());
  }
}

TEST_F(ClassRegisterTest, FieldErrorsCarryTheClassName) {
  try {
    reg.create("Square", json(R"({"label": 5})"));
    ADD_FAILURE();
  } catch (const ParseErrorException& error) {
    EXPECT_EQ("Square.label", error.pathText());
  }
  EXPECT_THROW(reg.create("Plain", json(R"({"label": 5})")), ParseErrorException)
      << "a class without fields knows no key";
}

TEST_F(ClassRegisterTest, ASecondClassUnderANameEndsTheProcess) {
  const test_support::ChildResult child =
      test_support::runInChild([this] { reg.regClass<Plain>("SQUARE"); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_EQ("Error square alread registered cppbind_test::Square when register cppbind_test::Plain",
            child.output);
  EXPECT_NE(std::string::npos, child.errors.find("Assertion `false' failed"));
}

TEST_F(ClassRegisterTest, ANullFactoryEndsTheProcess) {
  const test_support::ChildResult child = test_support::runInChild(
      [this] { reg.regClass("Nothing", boost::shared_ptr<ObjFactory>()); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_NE(std::string::npos, child.errors.find("px != 0"));
}

TEST(ObjectTest, AnObjectNotCreatedByNameHasItsTypeNameAndNoJson) {
  const Square square;
  EXPECT_EQ("cppbind_test::Square", square.dumpStr());
  EXPECT_TRUE(square.getBaiscInfoJson().isNull());
  const test_support::ChildResult child =
      test_support::runInChild([&] { static_cast<void>(square.getJsonValue4Bind()); });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_NE(std::string::npos, child.errors.find("cppbind/Object.h"));
}

}  // namespace cppbind_test
