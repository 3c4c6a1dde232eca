// The module that schedules by a dispatching rule.
#pragma once

#include <cppbind/imp/binder.h>

#include <boost/shared_ptr.hpp>
#include <cstdint>

#include "DispatchRules.h"
#include "Instance.h"
#include "Schedule.h"
#include "progress/SearchProgress.h"
#include "progress/runProgress.h"

namespace jobshop {

class JobShopData;

/// Builds active schedules by a rule: one strictly, and if wanted further ones in which chance
/// bends the rule. The same numbers give the same schedules, on every machine.
///
/// In JSON: {"Dispatch": {"rule": "MWKR", "tries": 100}}.
class Dispatch : public LongModule {
 public:
  Dispatch();

  /// - "rule", required: the name of one of dispatchRules();
  /// - "tries", 1: how many schedules to build, the first strictly by the rule;
  /// - "noise", 0.3: how far chance bends the urgency of an operation in the others, as a part of
  ///   it, from 0 to 1;
  /// - "seed", 1: where chance starts;
  /// - "keep_best", true: a schedule of an earlier module stays unless this one's is shorter; when
  ///   false, this one's takes its place whatever it is.
  void setBind(cppbind::Binder* binder, bool bindFields);

  void processImp(libvarrow::ModuleData* data) override;

  boost::shared_ptr<libvarrow::ProgressStatistics> progress() const override { return progress_; }

 private:
  Schedule search(const JobShopData& shop, libvarrow::NumStatistics& makespans) const;
  void record(const Schedule& schedule, JobShopData& shop) const;
  void recordInterruptions(const Schedule& schedule, JobShopData& shop) const;

  DispatchRule rule_;
  int tries_ = 1;
  double noise_ = 0;
  std::uint64_t seed_ = 1;
  bool keepBest_ = true;
  boost::shared_ptr<SearchProgress> progress_;        // made with the keys
  libvarrow::CountStatistics* const schedulesBuilt_;  // over all runs; the module's own owns it
};

}  // namespace jobshop

namespace cppbind {

/// A rule stands in JSON by its name.
template <>
struct FieldCodec<jobshop::DispatchRule> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json,
                   jobshop::DispatchRule& field);
  static void write(JsonEncodeBinder& encoder, const jobshop::DispatchRule& field,
                    Json::Value& json);
};

}  // namespace cppbind
