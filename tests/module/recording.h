// Modules, data and an observer that record their calls.
#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "cppbind/cppbind.h"
#include "libvarrow/module/Module.h"
#include "libvarrow/module/ModuleData.h"
#include "libvarrow/module/RunObserver.h"

namespace module_test {

using libvarrow::Module;
using libvarrow::ModuleData;

/// Records every call of the frame, with its path.
struct RecordingData : ModuleData {
  Json::Value getBaiscInfoJson() override {
    if (!movesTo.empty()) dumpPath = movesTo;
    Json::Value info;
    if (hasInfo) info["steps"] = steps;
    return info;
  }
  void dumpDetailInfo(std::string path) const override { calls.push_back("detail " + path); }
  void dump4Debug(std::string path) const override { calls.push_back("debug " + path); }

  bool hasInfo = true;
  std::string movesTo;  // the dump path after the first call of getBaiscInfoJson
  int steps = 0;
  mutable std::vector<std::string> calls;
  std::vector<std::string> workPaths;
};

/// Adds its calls to those of the data.
struct Listener : libvarrow::RunObserver {
  static void add(const char* event, Module& step, ModuleData& data) {
    static_cast<RecordingData&>(data).calls.push_back(event + step.getModuleName());
  }
  void stepBegins(Module& step, ModuleData& data) override {
    if (throwsAtBegin) throw std::runtime_error("not now");
    add("begins ", step, data);
  }
  void stepEnds(Module& step, ModuleData& data) override { add("ends ", step, data); }
  void stepFails(Module& step, ModuleData& data) noexcept override { add("fails ", step, data); }
  libvarrow::DumpLevel dumpLevel() const override { return level; }
  bool isEndRequested() const noexcept override { return endsNow; }
  void ruleKept(const std::string& text) override { told.push_back(text); }
  void spanEnds(const std::string& name, std::chrono::steady_clock::time_point begin,
                std::chrono::steady_clock::time_point end) noexcept override {
    told.push_back(begin <= end ? name : "before its begin");
  }
  bool skipsStep(Module&, const ModuleData& data) override { return data.dumpPath == skipped; }

  libvarrow::DumpLevel level = libvarrow::DumpLevel::All;
  bool throwsAtBegin = false;
  bool endsNow = false;
  std::string skipped;
  std::vector<std::string> told;
};

/// Records its runs, and calls the function of the test.
class Worker : public Module {
 public:
  explicit Worker(std::string name = "Worker") : name_(std::move(name)) {}

  void processImp(ModuleData* data) override {
    auto& recording = static_cast<RecordingData&>(*data);
    ++recording.steps;
    recording.calls.push_back("work " + data->dumpPath);
    recording.workPaths.push_back(data->dumpPath);
    if (action) action(*data);
  }
  std::string getModuleName() override { return name_; }

  using Module::moduleStatistics;
  std::function<void(ModuleData&)> action;

 private:
  std::string name_;
};

/// A registered module with a configuration.
class Add : public Module {
 public:
  void processImp(ModuleData* data) override {
    static_cast<RecordingData&>(*data).steps += amount_;
  }
  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->bind("amount", amount_);
    binder->bind("from", from_, boost::posix_time::ptime());
  }

 private:
  int amount_ = 0;
  boost::posix_time::ptime from_;
};

}  // namespace module_test
