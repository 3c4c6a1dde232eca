// Reads an object whose fields have conditions, lists the fields of a class, checks a pipeline
// file, or writes the schema of pipeline files.
#include <cppbind/cppbind.h>
#include <libvarrow/libvarrow.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <fstream>
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

class Dispatch : public libvarrow::Module {
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

  void processImp(libvarrow::ModuleData*) override {}

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

class Shift : public libvarrow::Module {
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

  void processImp(libvarrow::ModuleData*) override {}

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

int checkFile(const cppbind::ClassRegister& classes) {
  // [check]
  const cppbind::Faults faults = libvarrow::checkPipelineFile("pipeline.json", classes);
  for (const cppbind::Fault& fault : faults.first) {
    std::cerr << "pipeline.json:" << fault.text() << '\n';
  }
  return faults.hasErrors() ? 1 : 0;
  // [/check]
}

void writeSchema(const cppbind::ClassRegister& classes) {
  // [schema]
  std::ofstream("pipeline.schema.json") << cppbind::schemaText(libvarrow::pipelineSchema(classes));
  // [/schema]
}

void testClasses(const cppbind::ClassRegister& classes) {
  // [test]
  for (const std::string& fault : cppbind::descriptionFaults(classes)) std::cout << fault << '\n';
  // [/test]
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
    } else if (argument == "check") {
      return checkFile(classes);
    } else if (argument == "schema") {
      writeSchema(classes);
      testClasses(classes);
    } else {
      listFields(classes, argument);
    }
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
