// Runs a pipeline file in any layout, and shows the purpose of each hook of a module and its data.
#include <libvarrow/backtrace/Check.h>
#include <libvarrow/env/process_init.h>
#include <libvarrow/json/json.h>
#include <libvarrow/log/log.h>
#include <libvarrow/module/ChainedModule.h>
#include <libvarrow/module/CommonModuleStatDumper.h>
#include <libvarrow/module/ModuleExecutor.h>
#include <libvarrow/module/ModuleLoader.h>
#include <libvarrow/statistics/StatisticsContainer.h>
#include <libvarrow/statistics/TimedStatDumper.h>
#include <libvarrow/stream/AutoCreateDirFileStream.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// [data]
// Jobs on one machine, as a list of their lengths.
struct Jobs : libvarrow::ModuleData {
  std::vector<int> lengths;

  // Returns the sum of the completion times of all jobs.
  int flow() const {
    int now = 0;
    int sum = 0;
    for (const int length : lengths) sum += now += length;
    return sum;
  }

  Json::Value getBaiscInfoJson() override {
    Json::Value info;
    info["flow"] = flow();
    return info;
  }
  void dumpDetailInfo(std::string path) const override {
    libvarrow::AutoCreateDirFileStream out(path);
    for (const int length : lengths)
      out << std::string(static_cast<std::size_t>(length), '=') << '\n';
  }
  // Writes the input for running the next module alone: a file that Load reads.
  void dump4Debug(std::string path) const override {
    Json::Value load;
    for (const int length : lengths) load["lengths"].append(length);
    libvarrow::AutoCreateDirFileStream(path + "load.json") << libvarrow::Json2Str(load);
  }
};
// [/data]

Jobs& jobsOf(libvarrow::ModuleData* data) {
  auto* jobs = dynamic_cast<Jobs*>(data);
  LIBVARROW_CHECK(jobs != nullptr);
  return *jobs;
}

class Load : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("lengths", lengths_);
  }
  void processImp(libvarrow::ModuleData* data) override { jobsOf(data).lengths = lengths_; }

 private:
  std::vector<int> lengths_;
};

// [module]
class Sort : public libvarrow::Module {
 public:
  Sort() : moved_(moduleStatistics.getCountStatistics("moved")) {}

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("longest_first", longestFirst_, false);
  }

  void processImp(libvarrow::ModuleData* data) override {
    std::vector<int>& lengths = jobsOf(data).lengths;
    const std::vector<int> before = lengths;
    {
      // Of this run, in the tree of statistics. (Null when a host records no statistics.)
      const libvarrow::TimeRecoderHelper timer(
          data->statisticsContainer->getTimeStatistics("sort"));
      sort(lengths);
    }
    // Of all runs of this module, in its module_stat.json.
    for (std::size_t i = 0; i < lengths.size(); ++i) {
      if (lengths[i] != before[i]) moved_->inc();
    }
  }
  // [/module]

 private:
  void sort(std::vector<int>& lengths) const {
    if (longestFirst_) {
      std::sort(lengths.begin(), lengths.end(), std::greater<>());
    } else {
      std::sort(lengths.begin(), lengths.end());
    }
  }

  bool longestFirst_ = false;
  libvarrow::CountStatistics* moved_;
};

class LimitFlow : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (bindFields) binder->bind("limit", limit_);
  }
  void processImp(libvarrow::ModuleData* data) override {
    const int flow = jobsOf(data).flow();
    if (flow <= limit_) return;
    throw std::runtime_error("flow " + std::to_string(flow) + " is over " + std::to_string(limit_));
  }

 private:
  int limit_ = 0;
};

void registerClasses(cppbind::ClassRegister& classes) {
  classes.regClass<Load>("Load");
  classes.regClass<Sort>("Sort");
  classes.regClass<LimitFlow>("LimitFlow");
}

// [executor]
boost::shared_ptr<libvarrow::Module> chainOf(const std::string& file) {
  cppbind::ClassRegister classes;
  classes.regClass<libvarrow::ChainedModule>("ChainedModule");
  classes.regClass<libvarrow::CommonModuleStatDumper>("CommonModuleStatDumper");
  registerClasses(classes);
  return libvarrow::ModuleExecutor(&classes, file, /*ignoreUnknownKeys=*/false).mainModule();
}
// [/executor]

// [loader]
boost::shared_ptr<libvarrow::Module> namedChainOf(const std::string& file) {
  libvarrow::ModuleLoader loader;  // knows ChainedModule and CommonModuleStatDumper
  registerClasses(loader.classRegister());
  loader.loadFile(file);
  if (loader.mainModule() == nullptr) throw std::runtime_error(file + " has no chained_module");
  return loader.mainModule();
}
// [/loader]

boost::shared_ptr<libvarrow::Module> objectOf(const std::string& file) {
  libvarrow::ModuleLoader loader;
  registerClasses(loader.classRegister());
  loader.loadJsonV2(cppbind::readJsonFile(file), &loader.classRegister());
  return loader.mainModule();
}

// [observer]
// Prints the steps of a run, writes only their key figures, and ends the run at a file "stop".
class Steps : public libvarrow::RunObserver {
 public:
  void stepBegins(libvarrow::Module&, libvarrow::ModuleData& data) override {
    std::cout << "begins " << data.dumpPath << std::endl;
  }
  void stepFails(libvarrow::Module& step, libvarrow::ModuleData&) noexcept override {
    std::cout << "fails " << step.getModuleName() << std::endl;
  }
  libvarrow::DumpLevel dumpLevel() const override { return libvarrow::DumpLevel::Brief; }
  bool isEndRequested() const noexcept override { return std::ifstream("stop").is_open(); }
};
// [/observer]

}  // namespace

// [main]
int main(int argc, char** argv) {
  libvarrow::porcessCommonInit();  // first: from now on a crash prints a back-trace
  InitRootLogger("log.conf");      // second: before it, only warnings and errors show
  const std::string layout = argc == 3 ? argv[1] : "";
  const std::string file = argv[argc - 1];

  libvarrow::StatisticsContainer statistics("jobs");
  // Outside the try block: its last write comes after everything else, including errors.
  const libvarrow::TimedStatDumper dumper(&statistics, "run/statistics.json");
  Jobs jobs;
  jobs.statisticsContainer = &statistics;
  jobs.dumpPath = "run/";  // the trailing slash is required
  Steps steps;
  if (layout == "--steps") jobs.setObserver(&steps);
  try {
    const auto pipeline = layout == "--named"    ? namedChainOf(file)
                          : layout == "--object" ? objectOf(file)
                                                 : chainOf(file);
    pipeline->process(&jobs);
    std::cout << "flow " << jobs.flow() << std::endl;
    return 0;
  } catch (const std::exception& error) {
    // Not restored after a failure: dumpPath is the path of the failed step, and
    // statisticsContainer points to its entry. The root is still valid.
    LIBVARROW_LOG_ERROR("%s: %s", jobs.dumpPath.c_str(), error.what());
    std::cerr << jobs.dumpPath << ": " << error.what() << std::endl;
    return 1;
  }
}
// [/main]
