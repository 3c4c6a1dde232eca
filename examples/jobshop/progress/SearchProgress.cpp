#include "progress/SearchProgress.h"

#include <utility>

namespace jobshop {

SearchProgress::SearchProgress(std::string name, std::uint64_t tries)
    : name_(std::move(name)), tries_(tries) {}

Json::Value SearchProgress::toJsonValue4Bind() const {
  Json::Value json = ProgressStatistics::toJsonValue4Bind();
  json["search"] = name_;
  return json;
}

}  // namespace jobshop
