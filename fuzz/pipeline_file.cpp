// Any bytes as a pipeline file, with modules that have every kind of field: reading ends in modules
// or in an exception, what they are written as reads back the same, and short chains are run.
#include <boost/filesystem/operations.hpp>
#include <set>

#include "harness.h"
#include "libvarrow/libvarrow.h"

namespace {

using boost::posix_time::hours;
using boost::posix_time::ptime;
using boost::posix_time::time_duration;

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

class Everything : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData* data) override {
    data->statisticsContainer->getCountStatistics("int", int_);
  }

  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("int", int_);
    binder->bind("small", small_, std::int8_t{-1});
    binder->bind("ulong", ulong_, 1);
    binder->bind("bool", bool_, false);
    binder->bind("text", text_, "default");
    binder->bind("shared", shared_, boost::shared_ptr<std::string>());
    binder->bind("time", time_, ptime());
    binder->bind("date", date_, boost::gregorian::date());
    binder->bind("duration", duration_, time_duration());
    // Three digits of hours are written, but not read again.
    if (!duration_.is_special() && duration_.abs() >= hours(100)) duration_ = hours(99);
    binder->bind("flags", flags_, {});
    binder->bind("set", set_, {});
    binder->bind("times", times_, {});
    binder->bind("point", point_, Point());
    binder->bind("calendar", calendar_, libvarrow::TimeBlock());
    binder->bind("object", object_, boost::shared_ptr<cppbind::Object>());
    const Json::Value none(Json::arrayValue);
    binder->bind("modules", modules_, &none);
  }

 private:
  int int_ = 0;
  std::int8_t small_ = 0;
  unsigned long ulong_ = 0;
  bool bool_ = false;
  std::string text_;
  boost::shared_ptr<std::string> shared_;
  ptime time_;
  boost::gregorian::date date_;
  time_duration duration_;
  std::vector<bool> flags_;
  std::set<int> set_;
  std::vector<ptime> times_;
  Point point_;
  libvarrow::TimeBlock calendar_;
  boost::shared_ptr<cppbind::Object> object_;
  std::vector<boost::shared_ptr<libvarrow::Module>> modules_;
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

// A dump path that is too long for a file ends the process by design, and so may a deep chain; a
// long one only takes time.
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
