#include "libvarrow/host/Summary.h"

#include <json/value.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "base/system_text.h"
#include "host/json_string.h"
#include "host/one_line.h"
#include "libvarrow/json/json.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow {

namespace {

// Values are in UTF-8, like all JSON; labels are in the encoding of the system.
using Facts = std::vector<std::pair<std::string, Json::Value>>;

std::string jsonText(const Facts& facts) {
  std::map<std::string, Json::Value> lists;
  for (const auto& [label, value] : facts) {
    lists[host::jsonString(label).asString()].append(value);
  }
  Json::Value json(Json::objectValue);
  for (const auto& [label, values] : lists) json[label] = values.size() == 1 ? values[0] : values;
  return Json2Str(json);
}

std::string linesText(const Facts& facts) {
  std::size_t width = 0;
  for (const auto& fact : facts) width = std::max(width, fact.first.size());
  std::string lines;
  for (const auto& [label, value] : facts) {
    const std::string text =
        utility::fromUtf8(value.isString() ? value.asString() : Json2Str(value));
    lines += label + std::string(width - label.size() + 2, ' ') + host::oneLine(text) + '\n';
  }
  return lines;
}

}  // namespace

struct Summary::Imp {
  Facts facts;
};

Summary::Summary() : imp_(std::make_unique<Imp>()) {}

Summary::~Summary() = default;

void Summary::add(const std::string& label, const std::string& text) {
  addValue(label, base::utf8Text(text));
}

void Summary::addValue(const std::string& label, const Json::Value& value) {
  imp_->facts.emplace_back(host::oneLine(base::systemText(label)), value);
}

std::string Summary::text(bool asJson) const {
  return asJson ? jsonText(imp_->facts) : linesText(imp_->facts);
}

}  // namespace libvarrow
