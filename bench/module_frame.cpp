// The frame around a module's work: an empty module against the system calls of its one file.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "allocations.h"
#include "cppbind/cppbind.h"
#include "libvarrow/module/Module.h"
#include "libvarrow/stream/AutoCreateDirFileStream.h"

namespace bench {

namespace {

namespace fs = boost::filesystem;

class TemporaryDirectory {
 public:
  explicit TemporaryDirectory(const fs::path& parent)
      : path_(parent / fs::unique_path("varrow-bench-%%%%-%%%%-%%%%")) {
    fs::create_directory(path_);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    boost::system::error_code ignored;
    fs::remove_all(path_, ignored);
  }

  /// Returns the path with a "/" at its end.
  std::string prefix() const { return path_.string() + "/"; }

 private:
  fs::path path_;
};

/// Returns a directory in memory if the system has one: a disk's time would hide the frame's.
TemporaryDirectory memoryDirectory() {
  const fs::path memory("/dev/shm");
  return TemporaryDirectory(fs::is_directory(memory) ? memory : fs::temp_directory_path());
}

class EmptyModule : public libvarrow::Module {
 public:
  void processImp(libvarrow::ModuleData*) override {}
};

std::unique_ptr<libvarrow::Module> moduleByName() {
  cppbind::ClassRegister classes;
  classes.regClass<EmptyModule>("EmptyModule");
  return std::unique_ptr<libvarrow::Module>(
      classes.create<libvarrow::Module>("EmptyModule", Json::Value()));
}

bool writeFile(const std::string& path, const std::string& text) {
  char currentDirectory[PATH_MAX];
  if (getcwd(currentDirectory, sizeof currentDirectory) == nullptr) return false;
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) return false;
  const bool isWritten = write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  return close(file) == 0 && isWritten;
}

void processModule(benchmark::State& state) {
  const TemporaryDirectory directory = memoryDirectory();
  const std::unique_ptr<libvarrow::Module> module = moduleByName();
  libvarrow::ModuleData data;
  data.dumpPath = directory.prefix();
  const AllocationCounter counted(state);
  for (auto _ : state) module->process(&data);
}

void processModuleWithStatistics(benchmark::State& state) {
  const TemporaryDirectory directory = memoryDirectory();
  const std::unique_ptr<libvarrow::Module> module = moduleByName();
  libvarrow::ModuleData data;
  data.dumpPath = directory.prefix();
  const AllocationCounter counted(state);
  for (auto _ : state) {
    // A new container each time: every run of a module adds to it.
    libvarrow::StatisticsContainer run("run");
    data.statisticsContainer = &run;
    module->process(&data);
  }
}

void systemCalls(benchmark::State& state) {
  const TemporaryDirectory directory = memoryDirectory();
  libvarrow::ModuleData data;
  data.dumpPath = directory.prefix();
  const std::string path = data.dumpPath + "module_stat.json";
  moduleByName()->process(&data);
  std::ifstream file(path);
  const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const AllocationCounter counted(state);
  for (auto _ : state) {
    if (!writeFile(path, text)) {
      state.SkipWithError("the file can not be written");
      break;
    }
  }
}

// Another new folder each time, as for the steps of a run; its removal is not measured.
template <class Write>
void inNewFolders(benchmark::State& state, Write write) {
  const TemporaryDirectory directory = memoryDirectory();
  std::size_t step = 0;
  std::string folder = directory.prefix() + "0_step/";
  for (auto _ : state) {
    if (!write(folder)) state.SkipWithError("the file can not be written");
    state.PauseTiming();
    fs::remove_all(folder);
    folder = directory.prefix() + std::to_string(++step) + "_step/";
    state.ResumeTiming();
  }
}

void processInNewFolder(benchmark::State& state) {
  const std::unique_ptr<libvarrow::Module> module = moduleByName();
  inNewFolders(state, [&](const std::string& folder) {
    libvarrow::ModuleData data;
    data.dumpPath = folder;
    module->process(&data);
    return true;
  });
}

void systemCallsInNewFolder(benchmark::State& state) {
  inNewFolders(state, [&](const std::string& folder) {
    return mkdir(folder.c_str(), 0777) == 0 && writeFile(folder + "module_stat.json", "{}");
  });
}

template <class Stream>
void openFile(benchmark::State& state) {
  const TemporaryDirectory directory = memoryDirectory();
  const std::string path = directory.prefix() + "file";
  for (auto _ : state) {
    Stream stream(path);
    benchmark::DoNotOptimize(stream.is_open());
  }
}

BENCHMARK(processInNewFolder)->Name("module/process_new_folder");
BENCHMARK(systemCallsInNewFolder)->Name("module/system_calls_new_folder");
BENCHMARK(openFile<libvarrow::AutoCreateDirFileStream>)->Name("open_file/creates_folder");
BENCHMARK(openFile<std::ofstream>)->Name("open_file/ofstream");
BENCHMARK(processModule)->Name("module/process");
BENCHMARK(processModuleWithStatistics)->Name("module/process_with_statistics");
BENCHMARK(systemCalls)->Name("module/system_calls");

}  // namespace

}  // namespace bench
