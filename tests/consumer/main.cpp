// A host outside the tree: its own classes and those of a plug-in, in one pipeline.
#include <libvarrow/libvarrow.h>

#include <cstring>
#include <iostream>

static_assert(LIBVARROW_VERSION_NUMBER >= LIBVARROW_VERSION_OF(1, 0, 0));

struct Numbers : libvarrow::ModuleData {
  Json::Value getBaiscInfoJson() override {
    Json::Value info;
    info["steps"] = steps;
    return info;
  }
  int steps = 0;
};

class Step : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData* data) override { ++static_cast<Numbers*>(data)->steps; }
};

int main(int argc, char** argv) {
  libvarrow::porcessCommonInit();
  if (argc > 1 && std::strcmp(argv[1], "break-a-check") == 0) {
    libvarrow::TimeBlock().beginTime();  // an assertion in a header, active also with NDEBUG
    return 0;
  }
  libvarrow::DllManager plugins;
  try {
    const auto modules = libvarrow::RegistersManager::createRegister("modules");
    modules->regClass<Step>("Step");
    plugins.autoLoad("plugins");
    Numbers numbers;
    numbers.dumpPath = "run/";
    libvarrow::ModuleExecutor(modules.get(), PIPELINE, false).process(&numbers);
    std::cout << "steps: " << numbers.steps << std::endl;
    return 0;
  } catch (const std::exception& error) {
    std::cerr << error.what() << std::endl;
    return 1;
  }
}
