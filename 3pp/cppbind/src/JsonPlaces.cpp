#include "cppbind/JsonPlaces.h"

#include <algorithm>
#include <charconv>
#include <string_view>
#include <utility>

#include "base/json_tokens.h"
#include "base/utf8.h"

namespace cppbind {

namespace {

using libvarrow::base::JsonToken;
using libvarrow::base::JsonTokenKind;
using libvarrow::base::JsonTokens;

constexpr std::size_t kNone = JsonPlaces::kNone;
constexpr std::size_t kUsualBytesPerValue = 16;
// More than the length of any name.
constexpr std::size_t kEscaped = kNone / 2 + 1;

struct Value {
  std::size_t offset;
  std::size_t key;   // kNone if it has no key
  std::size_t name;  // its length, or kEscaped + the index of the name in escapedNames
  std::size_t firstChild;
  std::size_t childCount;

  std::size_t begin() const { return key == kNone ? offset : key; }
};

bool beginsBefore(const Value& left, const Value& right) {
  return left.begin() < right.begin();
}

// Returns the index in "[2]", kNone for other elements. Errors never name "[02]".
std::size_t indexIn(const std::string& element) {
  if (element.size() < 3 || element.front() != '[' || element.back() != ']') return kNone;
  if (element[1] == '0' && element.size() > 3) return kNone;
  std::size_t index = 0;
  const char* const end = element.data() + element.size() - 1;
  const auto [stop, error] = std::from_chars(element.data() + 1, end, index);
  return stop == end && error == std::errc() ? index : kNone;
}

}  // namespace

struct JsonPlaces::Index {
  std::string text;
  // The children of each value are adjacent: elements in their order, members sorted by name, equal
  // names by offset.
  std::vector<Value> values;
  Value root{0, kNone, 0, 0, 0};
  std::vector<std::string> escapedNames;  // without their escape sequences
  std::vector<std::size_t> repeatedKeys;
  std::size_t textAfterValue = kNone;

  bool isList(const Value& value) const {
    return value.offset < text.size() && text[value.offset] == '[';
  }
  const Value* childrenBegin(const Value& value) const { return values.data() + value.firstChild; }
  const Value* childrenEnd(const Value& value) const {
    return childrenBegin(value) + value.childCount;
  }
  std::string_view nameOf(const Value& member) const;
  const Value* childOf(const Value& value, const std::string& element) const;
  const Value* memberOf(const Value& object, std::string_view name) const;
  const Value* lastChildAtOrBefore(const Value& value, std::size_t offset) const;
  std::string elementOf(const Value& parent, const Value& child) const;
};

std::string_view JsonPlaces::Index::nameOf(const Value& member) const {
  if (member.name >= kEscaped) return escapedNames[member.name - kEscaped];
  return std::string_view(text).substr(member.key + 1, member.name);
}

const Value* JsonPlaces::Index::childOf(const Value& value, const std::string& element) const {
  if (!isList(value)) return memberOf(value, element);
  const std::size_t index = indexIn(element);
  return index < value.childCount ? childrenBegin(value) + index : nullptr;
}

const Value* JsonPlaces::Index::memberOf(const Value& object, std::string_view name) const {
  const Value* const after = std::upper_bound(
      childrenBegin(object), childrenEnd(object), name,
      [this](std::string_view searched, const Value& member) { return searched < nameOf(member); });
  return after != childrenBegin(object) && nameOf(after[-1]) == name ? after - 1 : nullptr;
}

const Value* JsonPlaces::Index::lastChildAtOrBefore(const Value& value, std::size_t offset) const {
  const Value* last = nullptr;
  std::for_each(childrenBegin(value), childrenEnd(value), [&](const Value& child) {
    if (child.begin() <= offset && (last == nullptr || beginsBefore(*last, child))) last = &child;
  });
  return last;
}

std::string JsonPlaces::Index::elementOf(const Value& parent, const Value& child) const {
  if (!isList(parent)) return std::string(nameOf(child));
  return "[" + std::to_string(&child - childrenBegin(parent)) + "]";
}

// Fills an index in one pass. Not recursive, as the text may be nested to any depth.
class JsonPlaces::Builder {
 public:
  explicit Builder(Index& index)
      : index_(index), tokens_(index.text, libvarrow::base::byteOrderMarkLength(index.text)) {}

  void build() {
    index_.values.reserve(index_.text.size() / kUsualBytesPerValue);
    bool isValid = beginValue(tokens_.nextAfterComments(), kNone, 0);
    while (isValid && !open_.empty()) isValid = open_.back().isList ? readElement() : readMember();
    if (isValid) noteTextAfterValue();
    while (!open_.empty()) close();
    if (!pending_.empty()) index_.root = pending_.front();
    std::sort(index_.repeatedKeys.begin(), index_.repeatedKeys.end());
  }

 private:
  // An object or list whose end was not reached. Its children are the pending values after it.
  struct Open {
    std::size_t value;
    bool isList;
    bool isFirst;
    bool mayEnd;  // the parser accepts a comma before "}" if the last key is empty
  };

  bool beginValue(const JsonToken& token, std::size_t key, std::size_t name);
  bool readElement();
  bool readMember();
  bool endsMember(bool& isEnd);
  bool readName(const JsonToken& token, std::size_t& name);
  void close();
  void sortMembers(std::size_t first);
  void noteTextAfterValue();

  Index& index_;
  JsonTokens tokens_;
  std::vector<Open> open_;
  std::vector<Value> pending_;  // those whose parent is open
};

bool JsonPlaces::Builder::beginValue(const JsonToken& token, std::size_t key, std::size_t name) {
  const bool isList = token.kind == JsonTokenKind::ArrayBegin;
  const bool isOpened = isList || token.kind == JsonTokenKind::ObjectBegin;
  if (!isOpened && token.kind != JsonTokenKind::String &&
      token.kind != JsonTokenKind::EscapedString && token.kind != JsonTokenKind::OtherScalar) {
    return false;
  }
  if (isOpened) open_.push_back({pending_.size(), isList, true, true});
  pending_.push_back({token.begin, key, name, 0, 0});
  return true;
}

bool JsonPlaces::Builder::readElement() {
  const bool isFirst = std::exchange(open_.back().isFirst, false);
  JsonToken token = isFirst ? tokens_.next() : tokens_.nextAfterComments();
  if (token.kind == JsonTokenKind::ArrayEnd) {
    close();
    return true;
  }
  if (!isFirst && token.kind != JsonTokenKind::Comma) return false;
  // A comment before the first element requires one: the parser rejects "[/**/]".
  if (!isFirst || token.kind == JsonTokenKind::Comment) token = tokens_.nextAfterComments();
  return beginValue(token, kNone, 0);
}

bool JsonPlaces::Builder::readMember() {
  if (!std::exchange(open_.back().isFirst, false)) {
    bool isEnd = false;
    if (!endsMember(isEnd)) return false;
    if (isEnd) {
      close();
      return true;
    }
  }
  const JsonToken key = tokens_.nextAfterComments();
  if (key.kind == JsonTokenKind::ObjectEnd && open_.back().mayEnd) {
    close();
    return true;
  }
  std::size_t name = 0;
  if (!readName(key, name)) return false;
  open_.back().mayEnd = name == 0;
  if (tokens_.next().kind != JsonTokenKind::Colon) return false;
  return beginValue(tokens_.nextAfterComments(), key.begin, name);
}

// Reads the token after a member, and sets `isEnd` if it is the end of the object. After a comment
// the parser takes any other token for a comma.
bool JsonPlaces::Builder::endsMember(bool& isEnd) {
  JsonToken token = tokens_.next();
  const bool isAfterComment = token.kind == JsonTokenKind::Comment;
  if (isAfterComment) token = tokens_.nextAfterComments();
  isEnd = token.kind == JsonTokenKind::ObjectEnd;
  return isEnd || isAfterComment || token.kind == JsonTokenKind::Comma;
}

bool JsonPlaces::Builder::readName(const JsonToken& token, std::size_t& name) {
  name = token.end - token.begin - 2;
  if (token.kind == JsonTokenKind::String) return true;
  if (token.kind != JsonTokenKind::EscapedString) return false;
  std::string unescaped;
  const std::string_view text = std::string_view(index_.text).substr(token.begin + 1, name);
  if (!libvarrow::base::unescapeJson(text, unescaped)) return false;
  name = kEscaped + index_.escapedNames.size();
  index_.escapedNames.push_back(std::move(unescaped));
  return true;
}

void JsonPlaces::Builder::close() {
  const Open closed = open_.back();
  open_.pop_back();
  const std::size_t first = closed.value + 1;
  if (!closed.isList) sortMembers(first);
  pending_[closed.value].firstChild = index_.values.size();
  pending_[closed.value].childCount = pending_.size() - first;
  const auto children = pending_.begin() + static_cast<std::ptrdiff_t>(first);
  index_.values.insert(index_.values.end(), children, pending_.end());
  pending_.erase(children, pending_.end());
}

void JsonPlaces::Builder::sortMembers(std::size_t first) {
  const auto begin = pending_.begin() + static_cast<std::ptrdiff_t>(first);
  std::sort(begin, pending_.end(), [this](const Value& left, const Value& right) {
    const int order = index_.nameOf(left).compare(index_.nameOf(right));
    return order < 0 || (order == 0 && left.key < right.key);
  });
  for (std::size_t i = first + 1; i < pending_.size(); ++i) {
    if (index_.nameOf(pending_[i - 1]) != index_.nameOf(pending_[i])) continue;
    index_.repeatedKeys.push_back(pending_[i].key);
  }
}

void JsonPlaces::Builder::noteTextAfterValue() {
  const JsonToken token = tokens_.nextAfterComments();
  if (token.begin < index_.text.size()) index_.textAfterValue = token.begin;
}

JsonPlaces::JsonPlaces(std::string text) {
  const auto index = std::make_shared<Index>();
  index->text = std::move(text);
  Builder(*index).build();
  index_ = index;
}

const std::string& JsonPlaces::textOfIndex() const noexcept {
  return index_->text;
}

JsonPlaces::Place JsonPlaces::find(const std::vector<std::string>& path) const {
  const Value* value = &index_->root;
  std::size_t depth = 0;
  for (; depth < path.size(); ++depth) {
    const Value* const child = index_->childOf(*value, path[depth]);
    if (child == nullptr) break;
    value = child;
  }
  return {depth, value->key, value->offset};
}

const std::vector<std::size_t>& JsonPlaces::repeatedKeysOfIndex() const noexcept {
  return index_->repeatedKeys;
}

std::vector<std::string> JsonPlaces::pathTo(std::size_t offset) const {
  std::vector<std::string> path;
  const Value* value = &index_->root;
  while (offset != value->offset && offset != value->key) {
    const Value* const child = index_->lastChildAtOrBefore(*value, offset);
    if (child == nullptr) break;
    path.push_back(index_->elementOf(*value, *child));
    value = child;
  }
  return path;
}

std::size_t JsonPlaces::textAfterValue() const noexcept {
  return index_->textAfterValue;
}

}  // namespace cppbind
