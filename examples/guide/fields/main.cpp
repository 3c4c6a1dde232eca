// Reads an object whose fields have conditions, or lists the fields of a class.
#include <cppbind/cppbind.h>
#include <libvarrow/json/json.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace {

using boost::posix_time::ptime;

// [names]
enum class Order { fifo, edd };
constexpr auto enumNames(Order) {
  return cppbind::names<Order>({{Order::fifo, "FIFO"}, {Order::edd, "EDD"}});
}
// [/names]

class Dispatch : public cppbind::Object {
 public:
  // [conditions]
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->about("Schedules the operations one by one.");
    binder->field("rule", rule_, "SPT").oneOf({"SPT", "MWKR"}).about("The priority rule.");
    binder->field("tries", tries_, 1).atLeast(1).about("The number of schedules to try.");
    binder->field("noise", noise_, 0.0).between(0, 1).about("The share of chance.");
    binder->field("sizes", sizes_).notEmpty().about("Boxes.").each().atLeast(1).about("Pieces.");
    binder->field("order", order_, Order::fifo).about("The order of the jobs.");
    binder->field("speeds", speeds_).about("The speed of each machine.");
    binder->field("release", release_).about("The first time; null: now.");
  }
  // [/conditions]

 private:
  std::string rule_;
  int tries_ = 1;
  double noise_ = 0;
  std::vector<int> sizes_;
  // [kinds]
  Order order_ = Order::fifo;
  std::map<std::string, double> speeds_;
  std::optional<ptime> release_;
  // [/kinds]
};

class Shift : public cppbind::Object {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->field("from", from_).between(0, 24).about("The first hour.");
    binder->field("to", to_).between(0, 24).about("The hour after the last.");
    // [describing]
    if (binder->isReading() && !binder->isDescribing() && to_ <= from_) {
      throw cppbind::ParseErrorException("to", "not after \"from\"");
    }
    // [/describing]
  }

 private:
  int from_ = 0;
  int to_ = 0;
};

void listFields(const cppbind::ClassRegister& classes, const std::string& name) {
  // [describe]
  const cppbind::Description description = cppbind::describe(classes);
  for (const cppbind::FieldDescription& field : description.classWithId(name).fields) {
    std::cout << field.key << (field.isRequired ? "" : " (optional)") << ": " << field.value.about
              << '\n';
  }
  // [/describe]
}

}  // namespace

int main(int, char** argv) {
  cppbind::ClassRegister classes;
  classes.regClass<Dispatch>("Dispatch");
  classes.regClass<Shift>("Shift");
  try {
    const std::string argument = argv[1];
    if (argument.front() == '{') {
      boost::shared_ptr<cppbind::Object> object;
      cppbind::JsonDecodeBinder(&classes).bindDynamicType(libvarrow::Str2Json(argument), object);
      std::cout << libvarrow::Json2Str(cppbind::JsonEncodeBinder().jsonOf(*object));
    } else {
      listFields(classes, argument);
    }
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
