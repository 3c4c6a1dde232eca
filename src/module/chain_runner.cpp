#include "module/chain_runner.h"

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

#include "base/folder_name.h"
#include "base/system_text.h"
#include "libvarrow/log/log.h"
#include "libvarrow/module/CPUProfiler.h"

namespace libvarrow {

void runChainedStep(Module& module, std::size_t index, const std::string& chainPath,
                    ModuleData& data) {
  throwIfEndRequested(data);
  const std::string name = module.getModuleName();
  const std::string prefix =
      chainPath.empty() ? boost::uuids::to_string(boost::uuids::random_generator()()) : chainPath;
  const std::string stepPath = prefix + std::to_string(index) + "_" + base::folderName(name) + "/";
  data.dumpPath = stepPath;
  if (data.observer() != nullptr && data.observer()->skipsStep(module, data)) {
    data.dumpPath = chainPath;
    return;
  }
  const CPUProfiler profiler(stepPath + "_cpu.prof");
  LIBVARROW_LOG_INFO("Start module %s", base::systemName(name).c_str());
  module.process(&data);
  LIBVARROW_LOG_INFO("End module %s", base::systemName(name).c_str());
  data.dumpPath = chainPath;
}

}  // namespace libvarrow
