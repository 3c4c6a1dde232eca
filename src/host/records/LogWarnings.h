// The warnings of the log during a run.
#pragma once

#include <json/value.h>
#include <log4cplus/appender.h>

#include <cstddef>
#include <memory>

namespace libvarrow::host {

/// RAII guard: collects the messages of the root logger from level WARN upward. Collects nothing
/// when the log has no appender: warnings then go to standard error, which an appender would end.
class LogWarnings {
 public:
  /// The number of messages that are kept; others are counted.
  static constexpr std::size_t kLimit = 200;

  LogWarnings();
  LogWarnings(const LogWarnings&) = delete;
  LogWarnings& operator=(const LogWarnings&) = delete;
  ~LogWarnings();

  /// Returns a list of {time, level, text}. Thread-safe.
  Json::Value list() const;
  /// Returns the number of the messages that are not in the list. Thread-safe.
  std::size_t dropped() const;

 private:
  struct Messages;
  class Appender;

  std::shared_ptr<Messages> messages_;
  log4cplus::SharedAppenderPtr appender_;  // null: not added
};

}  // namespace libvarrow::host
