#include "modules/ReadInstance.h"

#include <libvarrow/log/log.h>

#include "JobShopData.h"
#include "problem/InstanceReader.h"

namespace jobshop {

void ReadInstance::setBind(cppbind::Binder* binder, bool bindFields) {
  if (!bindFields) return;
  binder->about("Reads the instance to plan.");
  binder->field("file", file_)
      .notEmpty()
      .about("A path from the pipeline file's folder, or absolute.");
}

void ReadInstance::processImp(libvarrow::ModuleData* data) {
  JobShopData& shop = JobShopData::of(data);
  const auto path = file_.path(*data);
  const libvarrow::TimeRecoderHelper timer(shop.statistics().getTimeStatistics("reading"));
  shop.setInstance(readInstance(path.generic_string()));
  const Instance& instance = shop.instance();
  shop.statistics().getCountStatistics("jobs")->inc(instance.jobs.size());
  shop.statistics().getCountStatistics("operations")->inc(instance.operationCount());
  LIBVARROW_LOG_INFO("%s: %zu jobs, %zu machines", path.generic_string().c_str(),
                     instance.jobs.size(), instance.machineCount);
}

}  // namespace jobshop
