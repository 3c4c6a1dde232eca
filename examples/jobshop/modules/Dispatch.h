// The module that schedules by a dispatching rule.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <cstdint>
#include <string>

#include "problem/Instance.h"
#include "schedule/Schedule.h"

namespace jobshop {

class JobShopData;

/// Module that builds active schedules: one strictly by a rule, and further ones with random
/// changes of urgency. The same keys give the same schedules on every machine.
///
/// In JSON: {"Dispatch": {"rule": "MWKR", "tries": 100}}.
class Dispatch : public libvarrow::Module {
 public:
  Dispatch();

  void setBind(cppbind::Binder* binder, bool bindFields);

  void processImp(libvarrow::ModuleData* data) override;

 private:
  Schedule search(const JobShopData& shop, libvarrow::NumStatistics& makespans) const;
  void record(const Schedule& schedule, JobShopData& shop) const;
  void recordInterruptions(const Schedule& schedule, JobShopData& shop) const;

  std::string rule_;  // the name of one of dispatchRules()
  int tries_ = 1;
  double noise_ = 0;
  std::uint64_t seed_ = 1;
  bool keepBest_ = true;
  libvarrow::CountStatistics* const schedulesBuilt_;  // of all runs; owned by moduleStatistics
};

}  // namespace jobshop
