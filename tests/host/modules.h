// The modules of a small host: each does in one step one thing that a run can meet.
#pragma once

#include <libvarrow/host/Host.h>
#include <libvarrow/libvarrow.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <thread>

namespace host_test {

struct Orders : libvarrow::ModuleData {
  int open = 0;
  Json::Value getBaiscInfoJson() override {
    Json::Value info;
    info["open"] = open;
    return info;
  }
  void dump4Debug(std::string path) const override {
    libvarrow::AutoCreateDirFileStream(path + "open.txt") << open;
  }
  void restore4Debug(const std::string& path) override {
    std::ifstream file(path + "open.txt");
    if (!(file >> open)) throw std::runtime_error("no open.txt");
  }
};

struct Late : libvarrow::Rule {
  int limit = 0;
  void setBind(cppbind::Binder* binder, bool) { binder->field("limit", limit).atLeast(0); }
};

/// Module with a field of every kind that overrides treat differently.
struct Receive : libvarrow::Module {
  int count = 0;
  std::string note;
  std::map<std::string, int> lots;
  libvarrow::InputFile file;
  libvarrow::RuleFileName rules;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->field("count", count, 1).atLeast(1);
    binder->field("note", note, "");
    binder->field("lots", lots, {});
    binder->field("file", file, libvarrow::InputFile());
    binder->field("rules", rules, libvarrow::RuleFileName());
  }
  void processImp(libvarrow::ModuleData* data) override {
    static_cast<Orders*>(data)->open += count;
    if (file.empty()) return;
    std::ifstream input(file.path(*data).string());
    if (!(input >> static_cast<Orders*>(data)->open)) {
      throw std::runtime_error(file.name() + ": not a number");
    }
  }
};

/// Module that does what its field says.
struct Act : libvarrow::Module {
  std::string how;
  std::string text;
  int seed = 0;

  void setBind(cppbind::Binder* binder, bool bindFields) {
    if (!bindFields) return;
    binder->field("how", how)
        .oneOf({"write", "print", "keep", "report", "break", "throw", "throw a number",
                "throw a text of the system", "check", "crash", "trace", "wait", "hang"});
    binder->field("text", text, "");
    binder->field("order_seed", seed, 7);
  }
  void processImp(libvarrow::ModuleData* data) override {
    if (how == "write") write(*data);
    if (how == "print") print();
    if (how == "keep") libvarrow::reportRuleKept(*data, libvarrow::utility::fromUtf8(text));
    if (how == "trace") trace(*data);
    if (how == "report") libvarrow::reportRulesBroken(*data, text);
    if (how == "break") throw libvarrow::RulesBroken(text);
    if (how == "throw") throw std::runtime_error(text);
    if (how == "throw a number") throw 1;
    if (how == "throw a text of the system") {
      throw std::runtime_error(libvarrow::utility::fromUtf8(text));
    }
    if (how == "check") LIBVARROW_CHECK(text == "never");
    if (how == "crash") std::raise(SIGSEGV);
    if (how == "wait" || how == "hang") wait(*data);
  }

 private:
  void write(const libvarrow::ModuleData& data) const {
    const auto path = libvarrow::outputPath(data, libvarrow::utility::fromUtf8(text));
    std::ofstream(path.string()) << data.dumpPath;
    libvarrow::addRunFile(data, "orders", path);
  }
  // Spans on two threads, and more warnings than the record keeps.
  void trace(const libvarrow::ModuleData& data) const {
    const libvarrow::TraceSpan outer(data, text);
    std::thread([&] { const libvarrow::TraceSpan other(data, "other"); }).join();
    for (int i = 0; i < 201; ++i) {
      const libvarrow::TraceSpan inner(data, "inner");
      LIBVARROW_LOG_WARN("late %d", i);
    }
  }
  static void print() {
    std::cout << "by a stream\n";
    std::printf("by the C library\n");
  }
  // Writes a file when it has begun. A step that hangs does not ask whether the run must end.
  void wait(const libvarrow::ModuleData& data) const {
    auto* const progress = new libvarrow::SimpleProgressStatistics(4);
    data.statisticsContainer->addStat("waiting", progress);
    progress->inc(1);
    std::ofstream(libvarrow::outputPath(data, "waiting").string()) << "yes";
    for (;;) {
      if (how == "wait") libvarrow::throwIfEndRequested(data);
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
};

inline void registerOrders(libvarrow::Host& host) {
  host.regClass<Receive>("Receive");
  host.regClass<Act>("Act");
  host.regRule<Late>("Late");
  host.regRule<Late>("LateModule");  // resembles the key of a pipeline
}

}  // namespace host_test
