// Fuzzes pipeline files, with modules of many kinds of fields: reading gives modules or an
// exception, and written modules read back the same.
#include <set>
#include <tuple>

#include "harness.h"
#include "libvarrow/libvarrow.h"

namespace {

using boost::posix_time::ptime;

struct Point {
  double x = 0;
  float y = 0;
  std::vector<Point> nested;

  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("x", x);
    binder->bind("y", y, 0.5F);
    binder->bind("nested", nested, {});
  }
};

struct Everything : libvarrow::Module {
  void processImp(libvarrow::ModuleData*) override {}

  void setBind(cppbind::Binder* binder, bool) {
    const char* const keys[] = {"int", "small",  "ulong", "bool", "text",  "shared",   "time",
                                "day", "length", "flags", "set",  "point", "calendar", "object"};
    const char* const* key = keys;
    const auto bind = [&](auto& field) {
      binder->bind(*key++, field, std::decay_t<decltype(field)>());
    };
    std::apply([&](auto&... all) { (bind(all), ...); }, fields);
    const Json::Value none(Json::arrayValue);
    binder->bind("modules", modules, &none);
  }

  std::tuple<int, std::int8_t, unsigned long, bool, std::string, boost::shared_ptr<std::string>,
             ptime, boost::gregorian::date, boost::posix_time::time_duration, std::vector<bool>,
             std::set<int>, Point, libvarrow::TimeBlock, boost::shared_ptr<cppbind::Object>>
      fields{};
  std::vector<boost::shared_ptr<libvarrow::Module>> modules;
};

std::string written(const libvarrow::ModuleExecutor& executor) {
  const auto& chain = dynamic_cast<libvarrow::ChainedModule&>(*executor.mainModule());
  Json::Value pipeline;
  pipeline["modules"] = Json::Value(Json::arrayValue);
  for (const auto& module : chain.getData4Bind().modules) {
    pipeline["modules"].append(module->getJsonValue4Bind());
  }
  return libvarrow::Json2Str(pipeline);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static cppbind::ClassRegister classes = [] {
    cppbind::ClassRegister made;
    made.regClass<libvarrow::ChainedModule>("ChainedModule");
    made.regClass<libvarrow::ChainedModuleV2>("ChainedModuleV2");
    made.regClass<Everything>("Everything");
    return made;
  }();
  const std::string file = fuzz::writeScratch("pipeline.json", fuzz::textOf(data, size));
  fuzz::passes<cppbind::ParseErrorException>(
      [&] { libvarrow::ModuleExecutor(&classes, file, true); });
  fuzz::passes<cppbind::ParseErrorException>([&] {
    const libvarrow::ModuleExecutor executor(&classes, file, false);
    const std::string text = written(executor);
    const std::string again = fuzz::writeScratch("again.json", text);
    fuzz::requireSame(text, written(libvarrow::ModuleExecutor(&classes, again, false)), "written");
  });
  return 0;
}
