#include "progress/runProgress.h"

#include <libvarrow/module/ChainedModule.h>

#include <vector>

namespace jobshop {

namespace {

using Parts = std::vector<boost::shared_ptr<libvarrow::ProgressStatistics>>;

void collect(const libvarrow::Module& module, Parts& parts) {
  if (const auto* const longModule = dynamic_cast<const LongModule*>(&module)) {
    parts.push_back(longModule->progress());
  } else if (const auto* const chain = dynamic_cast<const libvarrow::ChainedModule*>(&module)) {
    for (const auto& step : chain->getData4Bind().modules) collect(*step, parts);
  }
}

}  // namespace

void addRunProgress(const libvarrow::Module& chain, libvarrow::StatisticsContainer& statistics) {
  Parts parts;
  collect(chain, parts);
  if (parts.empty()) return;
  // addStat() takes ownership.
  statistics.addStat("progress", new libvarrow::ComposedProgressStatistics(parts));
}

}  // namespace jobshop
