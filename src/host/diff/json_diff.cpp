#include "host/diff/json_diff.h"

#include <algorithm>
#include <set>

#include "base/json_text.h"

namespace libvarrow::host {

namespace {

class JsonDiff {
 public:
  JsonDiff(const FoldersOfRuns& folders, const std::string& title, JsonPath path,
           DiffReport& report)
      : folders_(folders), title_(title), path_(std::move(path)), report_(report) {}

  void compare(const Json::Value* left, const Json::Value* right) {
    if (report_.isEnough() || left == right) return;  // the latter when both are missing
    const bool areBoth = left != nullptr && right != nullptr;
    if (areBoth && left->isObject() && right->isObject()) {
      compareMembers(*left, *right);
    } else if (areBoth && left->isArray() && right->isArray()) {
      compareElements(*left, *right);
    } else if (!areBoth || !isSame(*left, *right)) {
      addDifference(left, right);
    }
  }

 private:
  void compareMembers(const Json::Value& left, const Json::Value& right) {
    std::set<std::string> keys;
    for (const std::string& key : left.getMemberNames()) keys.insert(key);
    for (const std::string& key : right.getMemberNames()) keys.insert(key);
    for (const std::string& key : keys) {
      const char* const end = key.data() + key.size();
      compareInner(key, left.find(key.data(), end), right.find(key.data(), end));
    }
  }

  void compareElements(const Json::Value& left, const Json::Value& right) {
    const Json::ArrayIndex count = std::max(left.size(), right.size());
    for (Json::ArrayIndex i = 0; i < count && !report_.isEnough(); ++i) {
      compareInner(indexText(i), i < left.size() ? &left[i] : nullptr,
                   i < right.size() ? &right[i] : nullptr);
    }
  }

  void compareInner(const std::string& part, const Json::Value* left, const Json::Value* right) {
    path_.push_back(part);
    compare(left, right);
    path_.pop_back();
  }

  bool isSame(const Json::Value& left, const Json::Value& right) const {
    if (left.isString() && right.isString()) {
      return folders_.isSame(left.asString(), right.asString());
    }
    // As text, because NaN is not equal to itself.
    return left.isString() == right.isString() &&
           base::json_text::onOneLine(left) == base::json_text::onOneLine(right);
  }

  void addDifference(const Json::Value* left, const Json::Value* right) {
    const auto shown = [](const Json::Value* value, std::size_t at) -> std::optional<Lines> {
      if (value == nullptr) return std::nullopt;
      return Lines{shownText(base::json_text::onOneLine(*value), at)};
    };
    std::size_t at = 0;
    if (left != nullptr && right != nullptr && left->isString() && right->isString()) {
      const std::string leftText = base::json_text::onOneLine(*left);
      const std::string rightText = base::json_text::onOneLine(*right);
      while (at < leftText.size() && at < rightText.size() && leftText[at] == rightText[at]) ++at;
    }
    const std::string path = pathText(path_);
    report_.add({path.empty() ? title_ : title_ + ": " + path, shown(left, at), shown(right, at)});
  }

  const FoldersOfRuns& folders_;
  const std::string& title_;
  JsonPath path_;
  DiffReport& report_;
};

}  // namespace

void diffJson(const Json::Value* left, const Json::Value* right, const FoldersOfRuns& folders,
              const std::string& title, JsonPath path, DiffReport& report) {
  JsonDiff(folders, title, std::move(path), report).compare(left, right);
}

}  // namespace libvarrow::host
