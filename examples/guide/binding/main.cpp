// Reads an order from JSON and writes it back, with one field of every kind.
#include <cppbind/ClassRegister.h>
#include <cppbind/Describer.h>
#include <cppbind/EnumNames.h>
#include <cppbind/JsonPlaces.h>
#include <cppbind/TextPositions.h>
#include <cppbind/imp/binder.h>
#include <libvarrow/json/json.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <boost/filesystem/operations.hpp>
#include <iostream>
#include <set>
#include <string>
#include <vector>

namespace {

using boost::posix_time::ptime;
using boost::posix_time::time_duration;

// [struct]
struct Operation {
  int machine = 0;
  time_duration work;
  double efficiency = 1;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("machine", machine);             // required
    binder->bind("work", work);                   // "01:30:00"
    binder->bind("efficiency", efficiency, 1.0);  // 1 when it is missing or null
  }
};
// [/struct]

// [classes]
// The packing of an order: JSON names its class.
class Packing : public cppbind::Object {
 public:
  virtual int weight() const = 0;
};

class Box : public Packing {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->field("weight", weight_).atLeast(1);  // a condition on the value
  }
  int weight() const override { return weight_; }

 private:
  int weight_ = 0;
};
// [/classes]

// [record]
// Constructed from the complete record, so an object is never half read.
class Pallet : public Packing {
 public:
  struct Data4Bind {
    std::vector<boost::shared_ptr<Packing>> load;
    void setBind(cppbind::Binder* binder, bool bindFields) {
      if (bindFields) binder->bind("load", load);
    }
  };

  explicit Pallet(const Data4Bind& record) : record_(record) {}
  const Data4Bind& getData4Bind() const { return record_; }  // for writing

  int weight() const override {
    int sum = 25;
    for (const auto& packing : record_.load) sum += packing->weight();
    return sum;
  }

 private:
  const Data4Bind record_;
};
// [/record]

enum class Priority { Normal, Urgent };
constexpr auto enumNames(Priority) {
  return cppbind::names<Priority>({{Priority::Normal, "normal"}, {Priority::Urgent, "urgent"}});
}

struct Size {
  int width = 0;
  int height = 0;
};

}  // namespace

// [codec]
// A new kind of field: one specialisation, in the same header as the type.
template <>
struct cppbind::FieldCodec<Size> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json, Size& field) {
    std::vector<int> sides;
    FieldCodec<std::vector<int>>::read(decoder, json, sides);
    if (sides.size() != 2) throw ParseErrorException("expected [WIDTH, HEIGHT]");
    field = {sides[0], sides[1]};
  }
  static void write(JsonEncodeBinder& encoder, const Size& field, Json::Value& json) {
    FieldCodec<std::vector<int>>::write(encoder, {field.width, field.height}, json);
  }
  static void describe(ValueDescription& value, Describer& describer) {  // optional, for schemas
    describer.describeElements<int>(value, ValueKind::List);
  }
};
// [/codec]

namespace {

// [order]
struct Order {
  std::string name;
  ptime due;
  boost::gregorian::date ordered;
  Priority priority = Priority::Normal;
  Size size;
  std::set<std::string> tags;
  std::vector<Operation> operations;
  boost::shared_ptr<Packing> packing;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("name", name);
    binder->bind("due", due);
    binder->bind("ordered", ordered, boost::gregorian::date(2024, 1, 1));
    binder->bind("priority", priority, Priority::Normal);
    binder->bind("size", size, {80, 200});
    binder->bind("tags", tags, {});
    binder->bind("operations", operations);
    binder->bind("packing", packing);
  }
};
// [/order]

// Returns the JSON in the file of that name, if it exists, or in the argument itself.
Json::Value jsonIn(const std::string& argument) {
  if (boost::filesystem::exists(argument)) return cppbind::readJsonFile(argument);
  return libvarrow::Str2Json(argument);
}

// [read]
Order readOrder(const Json::Value& json) {
  cppbind::ClassRegister classes;  // for the classes that JSON names
  classes.regClass<Box>("Box");
  classes.regClass<Pallet>("Pallet");
  cppbind::JsonDecodeBinder binder(&classes);
  Order order;
  binder.decode(json, order);
  return order;
}

std::string textOf(const Order& order) {
  return libvarrow::Json2Str(cppbind::JsonEncodeBinder().encode(order));
}
// [/read]

// [place]
// Returns "FILE:LINE:COLUMN: " of the value that the error names; for an unknown key this is the
// object.
std::string placeOf(const cppbind::ParseErrorException& error, const std::string& file) {
  const cppbind::JsonPlaces places(libvarrow::utility::readUTF8File(file));
  const std::size_t offset = places.find(error.path()).value;
  const cppbind::TextPosition at = cppbind::TextPositions(places.text()).at(offset);
  return file + ":" + std::to_string(at.line) + ":" + std::to_string(at.column) + ": ";
}
// [/place]

}  // namespace

int main(int, char** argv) {
  // [errors]
  try {
    const Order order = readOrder(jsonIn(argv[1]));
    std::cout << textOf(order) << "weight " << order.packing->weight() << '\n';
    return 0;
  } catch (const cppbind::ClassMissRegException& error) {  // the derived type first
    std::cerr << error.what() << "; did its plug-in load?\n";
  } catch (const cppbind::ParseErrorException& error) {
    const bool isInFile = !error.path().empty() && boost::filesystem::exists(argv[1]);
    if (isInFile) std::cerr << placeOf(error, argv[1]);
    std::cerr << "at \"" << error.pathText() << "\": " << error.message() << '\n';
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
  }
  return 1;
  // [/errors]
}
