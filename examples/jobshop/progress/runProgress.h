// The progress of a whole run.
#pragma once

#include <libvarrow/module/Module.h>
#include <libvarrow/statistics/ProgressStatistics.h>

#include <boost/shared_ptr.hpp>

namespace jobshop {

/// Base of modules that take long.
class LongModule : public libvarrow::Module {
 public:
  /// Returns the progress of this module alone; available before it runs.
  virtual boost::shared_ptr<libvarrow::ProgressStatistics> progress() const = 0;
};

/// Adds "progress" to `statistics`: the share of long modules that are done, in `chain` and its
/// nested chains. Adds nothing without a long module.
void addRunProgress(const libvarrow::Module& chain, libvarrow::StatisticsContainer& statistics);

}  // namespace jobshop
