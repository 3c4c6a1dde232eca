// How far a whole run has come.
#pragma once

#include <libvarrow/module/Module.h>
#include <libvarrow/statistics/ProgressStatistics.h>

#include <boost/shared_ptr.hpp>

namespace jobshop {

/// A base for modules that take long.
class LongModule : public libvarrow::Module {
 public:
  /// The progress of this module alone, there before it runs.
  virtual boost::shared_ptr<libvarrow::ProgressStatistics> progress() const = 0;
};

/// Adds "progress" to `statistics`: the share of the long modules in `chain`, and in the chains in
/// it, that are done. Nothing when there is no long module.
void addRunProgress(const libvarrow::Module& chain, libvarrow::StatisticsContainer& statistics);

}  // namespace jobshop
