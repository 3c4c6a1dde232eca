// Fuzzes pipeline files, with modules of many kinds of fields: reading gives modules or an
// exception, written modules read back the same, and short chains are run.
#include <boost/filesystem/operations.hpp>
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
  void processImp(libvarrow::ModuleData* data) override {
    data->statisticsContainer->getCountStatistics("int", std::get<int>(fields));
  }

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

// A dump path that is too long for a file ends the process by design, and a deep chain may; a long
// chain only takes time.
bool isSmall(const Json::Value& json, int depth = 0) {
  if (depth > 20 || json.size() > 20) return false;
  for (const Json::Value& member : json) {
    if (!isSmall(member, depth + 1)) return false;
  }
  return true;
}

void run(const libvarrow::ModuleExecutor& executor) {
  libvarrow::ModuleData data;
  libvarrow::StatisticsContainer statistics("fuzz");
  data.statisticsContainer = &statistics;
  data.dumpPath = fuzz::scratch("run/");
  fuzz::passes([&] { executor.process(&data); });
  statistics.dumpToFile(fuzz::scratch("run/statistics.json"));
  boost::filesystem::remove_all(fuzz::scratch("run"));
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
    if (isSmall(libvarrow::Str2Json(text))) run(executor);
  });
  return 0;
}
