// The module that shortens a schedule by local search.
#pragma once

#include <cppbind/imp/binder.h>
#include <libvarrow/module/Module.h>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <cstdint>
#include <optional>

namespace jobshop {

/// Module that shortens the schedule of the modules before it by a tabu search. It keeps that
/// schedule unless it finds a shorter one. Without a time limit, the same keys and the same
/// schedule give the same result on every machine. Refuses a shop with calendars.
///
/// When the run must end, the module keeps the shortest schedule so far and returns.
///
/// In JSON: {"Improve": {"iterations": 100000}} or {"Improve": {"time_limit": "00:00:10"}}.
class Improve : public libvarrow::Module {
 public:
  void setBind(cppbind::Binder* binder, bool bindFields);

  void processImp(libvarrow::ModuleData* data) override;

 private:
  std::optional<std::uint64_t> iterations_;
  std::optional<boost::posix_time::time_duration> timeLimit_;
  std::uint64_t seed_ = 1;
  std::uint64_t tenure_ = 1;
};

}  // namespace jobshop
