// The timeline of a run: trace.json in its folder, in the Chrome trace format.
#pragma once

#include <boost/filesystem/path.hpp>
#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace libvarrow::host {

/// Collector of the times of steps and spans. Thread-safe.
class TraceRecord {
 public:
  /// The number of steps, and the number of spans, that are kept; others are counted.
  static constexpr std::size_t kLimit = 100'000;

  using Clock = std::chrono::steady_clock;

  /// The calling thread, which runs the steps, becomes the thread "main". The run began at `begin`.
  explicit TraceRecord(Clock::time_point begin);

  /// Adds a step, "1_ChainedModule/0_Plan" in UTF-8, that ends now.
  void addStep(const std::string& step, Clock::time_point begin);
  /// Adds a span of the calling thread. Its name is in UTF-8.
  void addSpan(const std::string& name, Clock::time_point begin, Clock::time_point end);

  /// Writes the file into `folder`. Throws like writeWhole().
  void write(const boost::filesystem::path& folder) const;

 private:
  struct Event {
    std::string name;  // of a step the whole name
    Clock::time_point begin{};
    Clock::time_point end{};
    std::size_t thread = 0;
    bool isStep = false;
  };

  void add(Event event, std::size_t& count);
  std::size_t threadNumber();
  std::string text() const;
  void appendEvent(std::string& text, const Event& event) const;
  std::uint64_t micros(Clock::time_point time) const;

  const Clock::time_point begin_;
  mutable std::mutex mutex_;
  std::map<std::thread::id, std::size_t> threads_;
  std::vector<Event> events_;
  std::size_t steps_ = 0;
  std::size_t spans_ = 0;
};

}  // namespace libvarrow::host
