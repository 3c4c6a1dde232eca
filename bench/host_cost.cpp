// A pipeline of empty modules without dumps, run by a host or by the frame alone, for
// scripts/host_cost.sh, which counts the instructions of both:
//
//     varrow_host_cost run PIPELINE --out RUN --dumps none
//     varrow_host_cost frame PIPELINE                      in a folder with log/log.conf
#include <json/value.h>

#include <boost/filesystem/operations.hpp>
#include <exception>
#include <iostream>
#include <memory>
#include <string_view>

#include "libvarrow/host/Host.h"
#include "libvarrow/libvarrow.h"

namespace {

class Data : public libvarrow::ModuleData {};

class Empty : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder*, bool) {}
  void processImp(libvarrow::ModuleData*) override {}
};

class WithoutDumps : public libvarrow::RunObserver {
 public:
  libvarrow::DumpLevel dumpLevel() const override { return libvarrow::DumpLevel::None; }
};

void runByHand(const char* pipeline) {
  libvarrow::porcessCommonInit();
  InitRootLogger("log/log.conf");
  libvarrow::ModuleLoader loader;
  loader.classRegister().regClass<Empty>("E");
  const std::unique_ptr<libvarrow::Module> chain(
      loader.loadChainedModule(cppbind::readJsonFile(pipeline)));
  libvarrow::StatisticsContainer statistics("bench");
  const libvarrow::TimedStatDumper dumper(&statistics, "statistics.json");
  WithoutDumps observer;
  Data data;
  data.dumpPath = (boost::filesystem::current_path() / "dump/").string();  // absolute, as a host's
  data.statisticsContainer = &statistics;
  data.setObserver(&observer);
  chain->process(&data);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3 || std::string_view(argv[1]) != "frame") {
    libvarrow::Host host("bench", "Runs a pipeline of empty modules.");
    host.regClass<Empty>("E");
    return host.run<Data>(argc, argv);
  }
  try {
    runByHand(argv[2]);
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
}
