// Statistics files on disks that are full, unwritable or changing.
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <boost/filesystem/operations.hpp>
#include <cerrno>

#include "libvarrow/backtrace/BackTrace.h"
#include "libvarrow/statistics/TimedStatDumper.h"
#include "support/support.h"

namespace {
bool renameFails = false;
}

// Stands before the C library's for everything in this process.
extern "C" int rename(const char* from, const char* to) noexcept {
  if (!renameFails) return static_cast<int>(::syscall(SYS_renameat2, -100, from, -100, to, 0));
  errno = EIO;
  return -1;
}

namespace {

using namespace libvarrow;
using namespace test_support;
namespace fs = boost::filesystem;

constexpr int kCannotMount = 77;

void limitFileSize() {
  init_error_handler(false);  // or the first write beyond the limit ends the process
  const rlimit limit{20000, 20000};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

void mountSmallDisk() {
  if (::unshare(CLONE_NEWNS) != 0 ||
      ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
      ::mount("none", "disk", "tmpfs", 0, "size=20k") != 0) {
    ::_exit(kCannotMount);
  }
}

class BrokenDiskTest : public InTemporaryDirectory {
 protected:
  BrokenDiskTest() { fs::create_directory("disk"); }

  // A run that writes a small file, grows, and cannot write the next one whole.
  void expectLastWholeFileToStay(void (*breakDisk)()) {
    const auto child = runInChild([&] {
      breakDisk();
      { const TimedStatDumper dumper(&statistics, "disk/stat.json"); }
      const std::string small = readFile("disk/stat.json");
      statistics.getJsonStatistics("big", Json::Value(std::string(100000, 'x')));
      { const TimedStatDumper dumper(&statistics, "disk/stat.json"); }
      EXPECT_EQ(small, readFile("disk/stat.json"));
      EXPECT_FALSE(fs::exists("disk/stat.json.writing"));
      // The plain writer says nothing, and names what it wrote.
      EXPECT_EQ(fs::absolute("disk/other").string(), statistics.dumpToFile("disk/other"));
      EXPECT_GT(20001u, fs::file_size("disk/other"));
      ::_exit(testing::Test::HasFailure() ? 1 : 0);
    });
    if (child.exitCode == kCannotMount) GTEST_SKIP() << "only root may mount a disk";
    EXPECT_EQ(0, child.exitCode) << child.output << child.errors;
    EXPECT_TRUE(contains(child.errors, "/disk/stat.json.writing could not be written whole, "));
  }

  StatisticsContainer statistics{"run"};
};

TEST_F(BrokenDiskTest, OnAFullDiskTheLastWholeFileStays) {
  expectLastWholeFileToStay(mountSmallDisk);
}

TEST_F(BrokenDiskTest, AtTheLimitOnFileSizesTheLastWholeFileStays) {
  expectLastWholeFileToStay(limitFileSize);
}

TEST_F(BrokenDiskTest, WhereNoFileCanBeMadeTheProcessEndsAndSaysWhere) {
  writeFile("file", "");
  fs::permissions("disk", fs::perms::owner_read | fs::perms::owner_exe);
  fs::permissions(".", fs::perms::all_all);
  for (const char* target : {"disk/stat.json", "disk/inner/stat.json", "file/stat.json"}) {
    const auto child = runInChild([&] {
      if (::geteuid() == 0 && ::setuid(65534) != 0) return;  // root may write anywhere
      const TimedStatDumper dumper(&statistics, target);
    });
    EXPECT_EQ(SIGABRT, child.signal);
    EXPECT_TRUE(contains(child.errors, " real_file:" + fs::absolute(target).string() + ".writing"));
    EXPECT_TRUE(contains(child.errors, "Backtrace:\n 0# "));
  }
}

TEST_F(BrokenDiskTest, ADirectoryThatVanishesIsMadeAgain) {
  {
    const TimedStatDumper dumper(&statistics, "disk/inner/stat.json");
    fs::remove("disk");
  }
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("disk/inner/stat.json"));
}

TEST_F(BrokenDiskTest, WhatCannotBeRenamedIsKeptUnderItsTemporaryName) {
  const auto child = runInChild([&] {
    renameFails = true;
    const TimedStatDumper dumper(&statistics, "disk/stat.json");
  });
  EXPECT_EQ(SIGABRT, child.signal);
  EXPECT_TRUE(contains(child.errors, "boost::filesystem::rename")) << child.errors;
  EXPECT_EQ(statistics.dumpAsJsonString(), readFile("disk/stat.json.writing"));
}

}  // namespace
