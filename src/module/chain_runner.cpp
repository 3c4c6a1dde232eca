#include "module/chain_runner.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include "libvarrow/log/log.h"
#include "libvarrow/module/CPUProfiler.h"
#include "libvarrow/utility/UTFConverter.h"
#include "utility/utf8_text.h"

namespace libvarrow {

namespace {

// Returns a module's name for paths and logs, which are in the code page, while names of classes
// are UTF-8. A name that the module has converted, or that the code page lacks, stays as it is.
std::string nameInCodePage(std::string name) {
  if (utility::isUtf8InMemory(name)) return name;
  std::string converted = utility::fromUtf8(name);
  return utility::toUtf8(converted) == name ? converted : name;
}

}  // namespace

void runChainedStep(Module& module, std::size_t index, const std::string& chainPath,
                    ModuleData& data) {
  throwIfEndRequested(data);
  const std::string name = nameInCodePage(module.getModuleName());
  const std::string prefix =
      chainPath.empty() ? boost::uuids::to_string(boost::uuids::random_generator()()) : chainPath;
  const std::string stepPath = prefix + std::to_string(index) + "_" + name + "/";
  data.dumpPath = stepPath;
  if (data.observer() != nullptr && data.observer()->skipsStep(module, data)) {
    data.dumpPath = chainPath;
    return;
  }
  const CPUProfiler profiler(stepPath + "_cpu.prof");
  LIBVARROW_LOG_INFO("Start module %s", name.c_str());
  module.process(&data);
  LIBVARROW_LOG_INFO("End module %s", name.c_str());
  data.dumpPath = chainPath;
}

}  // namespace libvarrow
