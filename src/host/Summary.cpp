#include "libvarrow/host/Summary.h"

#include <json/value.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "host/one_line.h"
#include "libvarrow/json/json.h"

namespace libvarrow {

struct Summary::Imp {
  std::vector<std::pair<std::string, std::string>> facts;
};

Summary::Summary() : imp_(std::make_unique<Imp>()) {}

Summary::~Summary() = default;

void Summary::add(const std::string& label, const std::string& text) {
  imp_->facts.emplace_back(host::oneLine(label), text);
}

std::string Summary::text(bool asJson) const {
  if (asJson) {
    Json::Value json(Json::objectValue);
    for (const auto& [label, text] : imp_->facts) {
      Json::Value& member = json[label];
      if (member.isString()) {
        Json::Value list(Json::arrayValue);
        list.append(member);
        member = std::move(list);
      }
      if (member.isArray()) {
        member.append(text);
      } else {
        member = text;
      }
    }
    return Json2Str(json);
  }
  std::size_t width = 0;
  for (const auto& fact : imp_->facts) width = std::max(width, fact.first.size());
  std::string lines;
  for (const auto& [label, text] : imp_->facts) {
    lines += label + std::string(width - label.size() + 2, ' ') + host::oneLine(text) + '\n';
  }
  return lines;
}

}  // namespace libvarrow
