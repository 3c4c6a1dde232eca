// A host that creates its static objects in the order given by its arguments. The destructor of
// each uses the library again. Usage: ORDER PLUGINS return|thread|quick|_exit
#include <boost/filesystem/operations.hpp>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <thread>

#include "libvarrow/libvarrow.h"
#include "support/environment.h"

namespace {

using namespace libvarrow;

// Uses the objects that the library creates on first use, for the process or for a thread.
void useTheLibrary() {
  struct Times {
    boost::posix_time::ptime time;
    void setBind(cppbind::Binder* binder, bool) { binder->bind("time", time); }
  } times;
  const Json::Value json = cppbind::JsonEncodeBinder().encode(times);
  cppbind::JsonDecodeBinder().decode(Str2Json(Json2Str(json)), times);
  cppbind::BoostTimeDurationText::fromString("01:00:00");
  cppbind::BoostGDateText::toString(boost::gregorian::date());
  libvarrow::utility::writeFileForUTF8("serial.json",
                                       std::to_string(getSerialNum("a name that needs a heap")));
  registerLogInitedHandler([] {});
  RegistersManager::createRegister("host")->empty();
  RunTimeEnv::instance().confPath();
}

template <char kName>
struct Ends {
  ~Ends() {
    useTheLibrary();
    LIBVARROW_LOG_WARN("%c ends", kName);
  }
};

struct Dumpers : Ends<'d'> {
  Dumpers() {
    first.restart(1);
    second.restart(1);
  }
  ~Dumpers() { rows->inc(); }

  StatisticsContainer statistics{"run"};
  CountStatistics* rows = statistics.getCountStatistics("rows", 1);
  TimeRecoderHelper time{statistics.getTimeStatistics("")};
  TimedStatDumper first{&statistics, "first.json"};
  TimedStatDumper second{&statistics, "second.json"};
};

struct Logger : Ends<'l'> {
  Logger() {
    init_error_handler(false);
    InitRootLogger("none");
  }
};

struct Registries : Ends<'r'> {
  Registries() { own.regClass<ChainedModule>("ChainedModule"); }

  cppbind::ClassRegister own;
  boost::shared_ptr<cppbind::ClassRegister> shared = RegistersManager::createRegister("plug-ins");
};

struct Manager : Ends<'m'> {
  DllManager plugins;
};

struct PlugInObject : Ends<'o'> {
  std::unique_ptr<cppbind::Object> greeter;
};

template <class T>
T& only() {
  static T object;
  return object;
}

void make(char name) {
  if (name == 'd') only<Dumpers>();
  if (name == 'l') only<Logger>();
  if (name == 'r') only<Registries>();
  if (name == 'm') only<Manager>();
  if (name == 'o') only<PlugInObject>();
}

}  // namespace

int main(int, char** arguments) {
  const std::string order = arguments[1];
  const std::string way = arguments[3];
  for (const char name : order) make(name);
  if (order.find_first_of("mo") != std::string::npos) {
    only<Manager>().plugins.findOrCreateDll("good", arguments[2]);
    only<PlugInObject>().greeter.reset(
        RegistersManager::getRegister("plug-ins")->create("Greeter", Json::Value()));
  }
  useTheLibrary();
  std::cout << "main ends" << std::endl;
  const bool hasTimers = std::getenv("LIBVARROW_TIMED_STAT_DUMP") != nullptr;
  while (hasTimers && way != "return" && !boost::filesystem::exists("first.json")) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));  // the other file may be incomplete
  }
  if (way == "quick") test_support::endQuickly();
  if (way == "_exit") std::_Exit(0);
  if (way == "thread") std::thread([] { std::exit(0); }).join();
}
