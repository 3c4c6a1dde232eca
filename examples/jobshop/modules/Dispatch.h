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

/// Module that builds active schedules: one strictly by a rule, and further ones with random
/// changes of urgency. The same keys give the same schedules on every machine.
///
/// In JSON: {"Dispatch": {"rule": "MWKR", "tries": 100}}.
class Dispatch : public LongModule {
 public:
  Dispatch();

  /// Binds:
  /// - "rule", required: the name of one of dispatchRules();
  /// - "tries", by default 1: the number of schedules to build, the first strictly by the rule;
  /// - "noise", by default 0.3: the largest random change of an operation's urgency in the others,
  ///   as a part of it, from 0 to 1;
  /// - "seed", by default 1: the seed of the random numbers;
  /// - "keep_best", by default true: keeps the schedule of an earlier module unless this one's is
  ///   shorter; false: always replaces it.
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
  boost::shared_ptr<SearchProgress> progress_;        // created with the keys
  libvarrow::CountStatistics* const schedulesBuilt_;  // of all runs; owned by moduleStatistics
};

}  // namespace jobshop

namespace cppbind {

/// Codec of rules: JSON has the name.
template <>
struct FieldCodec<jobshop::DispatchRule> {
  static void read(JsonDecodeBinder& decoder, const Json::Value& json,
                   jobshop::DispatchRule& field);
  static void write(JsonEncodeBinder& encoder, const jobshop::DispatchRule& field,
                    Json::Value& json);
  static void describe(ValueDescription& value, Describer&);
};

}  // namespace cppbind
