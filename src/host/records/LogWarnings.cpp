#include "host/records/LogWarnings.h"

#include <log4cplus/logger.h>
#include <log4cplus/spi/loggingevent.h>

#include <mutex>
#include <utility>

#include "base/system_text.h"
#include "host/utc_text.h"

namespace libvarrow::host {

struct LogWarnings::Messages {
  mutable std::mutex mutex;
  Json::Value list{Json::arrayValue};
  std::size_t dropped = 0;
};

class LogWarnings::Appender : public log4cplus::Appender {
 public:
  explicit Appender(std::shared_ptr<Messages> messages) : messages_(std::move(messages)) {
    setThreshold(log4cplus::WARN_LOG_LEVEL);
  }
  ~Appender() override { destructorImpl(); }
  void close() override { closed = true; }

 protected:
  void append(const log4cplus::spi::InternalLoggingEvent& event) override {
    const std::lock_guard lock(messages_->mutex);
    if (messages_->list.size() == kLimit) {
      ++messages_->dropped;
      return;
    }
    Json::Value& entry = messages_->list.append(Json::Value(Json::objectValue));
    entry["time"] = utcText(event.getTimestamp());
    entry["level"] = log4cplus::getLogLevelManager().toString(event.getLogLevel());
    entry["text"] = base::utf8Text(event.getMessage());
  }

 private:
  const std::shared_ptr<Messages> messages_;
};

LogWarnings::LogWarnings() : messages_(std::make_shared<Messages>()) {
  log4cplus::Logger root = log4cplus::Logger::getRoot();
  if (root.getAllAppenders().empty()) return;
  appender_ = log4cplus::SharedAppenderPtr(new Appender(messages_));
  root.addAppender(appender_);
}

LogWarnings::~LogWarnings() {
  if (appender_) log4cplus::Logger::getRoot().removeAppender(appender_);
}

Json::Value LogWarnings::list() const {
  const std::lock_guard lock(messages_->mutex);
  return messages_->list;
}

std::size_t LogWarnings::dropped() const {
  const std::lock_guard lock(messages_->mutex);
  return messages_->dropped;
}

}  // namespace libvarrow::host
