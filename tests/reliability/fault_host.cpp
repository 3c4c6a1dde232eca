// A host that uses the whole library while one call of a kind fails: FAULT_HOST KIND N PLUGINS. The
// N-th call of that kind fails once (0: none); a step that throws says why and is done again.
#include <boost/filesystem/operations.hpp>
#include <iostream>
#include <memory>
#include <stdexcept>

#include "libvarrow/libvarrow.h"
#include "reliability/failing_calls.h"

namespace {

using namespace libvarrow;
using boost::posix_time::hours;
using boost::posix_time::ptime;

void writeText(const std::string& name, const std::string& text) {
  AutoCreateDirFileStream file(name);
  file << text << std::flush;
  if (!file) throw std::runtime_error("cannot write " + name);
}

struct Shop : ModuleData {
  Json::Value getBaiscInfoJson() override { return Str2Json(R"({"orders": 12, "load": 0.75})"); }
  void dumpDetailInfo(std::string path) const override { writeText(path, "twelve orders\n"); }
};

struct Machine {
  std::string name;
  TimeBlock calendar;
  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("name", name);
    binder->bind("calendar", calendar);
  }
};

class Plan : public Module {
 public:
  Plan() : runs_(moduleStatistics.getCountStatistics("runs")) {}
  void setBind(cppbind::Binder* binder, bool) {
    binder->bind("start", start_);
    binder->bind("weight", weight_, 0.5);
    binder->bind("machines", machines_, {});
  }
  void processImp(ModuleData* data) override {
    runs_->inc();
    StatisticsContainer& statistics = *data->statisticsContainer;
    for (Machine& machine : machines_) {
      TimeBlock free = machine.calendar;
      free.removeTimeBlock(start_ + hours(1), start_ + hours(2));
      free.addTimeBlocks(TimeBlock(start_ + hours(30), start_ + hours(40)));
      free.removeTimeBlock(TimeBlock(free.getBlockAtPos4Dur(start_, hours(3)).getBlocks()));
      statistics.getJsonStatistics(machine.name, Json::Value(free.dumpAsString()));
    }
    statistics.getDistributionStatistics("by machine")->inc("M1", 3);
    auto* lengths = new NumStatistics(10);
    statistics.addStat("lengths", lengths);
    lengths->add(25);
  }

 private:
  CountStatistics* runs_;
  ptime start_;
  double weight_ = 0;
  std::vector<Machine> machines_;
};

struct Limit : Rule {
  int most = 0;
  void setBind(cppbind::Binder* binder, bool) { binder->bind("most", most); }
};

constexpr const char* kPipeline = R"({"modules": [
  {"Plan": {"start": "2024-03-05 08:00:00", "weight": 1.25, "machines": [
    {"name": "the first machine of the large hall", "calendar": [
      {"timeBegin": "2024-03-05 06:00:00", "timeEnd": "2024-03-05 22:00:00"},
      {"timeBegin": "2024-03-06 06:00:00", "timeEnd": "2024-03-06 22:00:00"}]}]}},
  {"ChainedModule": {"modules": [{"Plan": {"start": "2024-03-06 08:00:00"}}]}}]})";
constexpr const char* kNamed = R"({"named_modules": {"plan": {"Plan":
  {"start": "2024-03-05 08:00:00"}}}, "chained_module": ["plan", "plan"]})";
constexpr const char* kRules =
    R"([{"Limit": {"most": 3}, "rule_list": [{"rule_level": 2, "Limit": {"most": 4}}]}])";

// What a run leaves in one directory.
template <class Run>
void withData(const std::string& directory, Run run) {
  Shop shop;
  StatisticsContainer statistics("run");
  TimedStatDumper dumper(&statistics, directory + "statistics.json");
  shop.statisticsContainer = &statistics;
  shop.dumpPath = directory;
  run(shop);
}

class Host {
 public:
  explicit Host(const char* plugIns) : plugIns_(plugIns) {}

  void setUp() {
    LIBVARROW_LOG_INFO("set up");
    const auto shared = RegistersManager::createRegister("host");
    shared->unregClass("Limit");
    shared->regClass<Limit>("Limit");
    cppbind::ClassRegister classes;
    classes.regClass<Plan>("Plan");
    classes.regClass<ChainedModule>("ChainedModule");
    classes_ = std::move(classes);
  }
  void plugIn() {
    DllManager manager;
    manager.findOrCreateDll("good", plugIns_);
    const std::unique_ptr<cppbind::Object> greeter(
        RegistersManager::getRegister("plug-ins")->create("Greeter", Json::Value()));
    writeText("plug-in.txt", greeter->dumpStr());
  }
  void runPipeline() {
    withData("run/",
             [&](Shop& shop) { ModuleExecutor(&classes_, "pipeline.json", false).process(&shop); });
  }
  void runNamed() {
    ModuleLoader loader;
    loader.classRegister().regClass<Plan>("Plan");
    loader.loadFile("named.json");
    withData("named/", [&](Shop& shop) { loader.mainModule()->process(&shop); });
  }
  void checkRules() {
    const auto* reg = RegistersManager::getRegister("host");
    ValidatorReason report("plan");
    const auto why = boost::make_shared<RuleValidatorReason>("machine 1");
    std::vector<std::unique_ptr<Rule>> rules;
    for (Rule* rule : RuleLoader::loadRules("rules.json", reg)) rules.emplace_back(rule);
    for (const auto& rule : rules) {
      auto detail = std::make_unique<Json::Value>(Str2Json(R"({"reasonStr": "too many orders"})"));
      why->appendReason(new RuleReason(rule.get(), detail));
    }
    report.addReason("load", why);
    writeText("report.txt", report.toStr() + Json2Str(report.getJsonValueInfoV2()));
  }
  void readAndWriteText() {
    const Json::Value pipeline = File2Json("pipeline.json");
    libvarrow::utility::writeFileForUTF8(boost::filesystem::absolute("copy.json").string(),
                                         pipeline);
    writeText("text.txt",
              PrefixOnEachLine("> ", libvarrow::utility::readUTF8File("pipeline.json")) +
                  libvarrow::utility::toUtf8("机器\xff" + Json2Str(pipeline)));
  }
  void writeBack() {
    cppbind::JsonDecodeBinder decoder(&classes_);
    ChainedModule::Data4Bind chain;
    decoder.decode(cppbind::readJsonFile("pipeline.json"), chain);
    CommonStatistics::dumpToFile("back.json", cppbind::JsonEncodeBinder().encode(chain));
  }

 private:
  std::string plugIns_;
  cppbind::ClassRegister classes_;
};

void doStep(const char* name, Host& host, void (Host::*step)()) {
  for (int tries = 0; tries < 2; ++tries) {
    try {
      (host.*step)();
      return;
    } catch (const std::exception& error) {
      std::cerr << "step " << name << ": " << error.what() << '\n';
    }
  }
  throw std::runtime_error(std::string(name) + " fails twice");
}

}  // namespace

int main(int, char** arguments) {
  writeText("pipeline.json", kPipeline);
  writeText("named.json", kNamed);
  writeText("rules.json", kRules);
  writeText("run/statistics.json", "{\"old\" : []}\n");
  init_error_handler(true);
  InitRootLogger("log.conf");
  Host host(arguments[3]);
  fault_injection::start(arguments[1], std::stoul(arguments[2]));
  doStep("set up", host, &Host::setUp);
  doStep("plug-in", host, &Host::plugIn);
  doStep("pipeline", host, &Host::runPipeline);
  doStep("named", host, &Host::runNamed);
  doStep("rules", host, &Host::checkRules);
  doStep("text", host, &Host::readAndWriteText);
  doStep("back", host, &Host::writeBack);
  std::cout << "calls: " << fault_injection::stop() << std::endl;
}
