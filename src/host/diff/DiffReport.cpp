#include "host/diff/DiffReport.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/utf8.h"

namespace libvarrow::host {

namespace {

constexpr std::size_t kMostListed = 10000;
constexpr std::size_t kLongestLine = 160;

std::string counted(std::size_t count, const std::string& thing) {
  return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

Json::Value listOf(const Lines& lines) {
  Json::Value list(Json::arrayValue);
  for (const std::string& line : lines) list.append(line);
  return list;
}

std::string secondsText(double seconds) {
  if (seconds < 0) return "-";
  char text[32];
  const auto milliseconds = static_cast<long long>(std::min(seconds, 1e12) * 1e3 + 0.5);
  std::snprintf(text, sizeof text, "%lld.%03lld s", milliseconds / 1000, milliseconds % 1000);
  return text;
}

std::string padded(const std::string& text, std::size_t width) {
  return std::string(width - std::min(width, text.size()), ' ') + text;
}

// Moves `at` to the begin of a character of UTF-8.
std::size_t atCharacter(const std::string& text, std::size_t at) {
  while (at > 0 && at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U)
    --at;
  return at;
}

}  // namespace

std::string shownText(const std::string& text, std::size_t at) {
  std::size_t begin = at + kLongestLine / 2 > text.size() && text.size() > kLongestLine
                          ? text.size() - kLongestLine
                          : at - std::min(at, kLongestLine / 2);
  begin = text.size() <= kLongestLine ? 0 : atCharacter(text, begin);
  const std::size_t end = atCharacter(text, std::min(text.size(), begin + kLongestLine));
  std::string shown = begin > 0 ? "..." : "";
  const auto* const bytes = reinterpret_cast<const unsigned char*>(text.data());
  for (std::size_t i = begin; i < end;) {
    const unsigned char byte = bytes[i];
    const unsigned char* const next = base::endOfUtf8Character(bytes + i, bytes + end);
    const bool isControl =
        next == nullptr ? byte < ' ' || byte >= 0x7F : byte == 0xC2 && bytes[i + 1] < 0xA0;
    if (isControl && byte != '\t') {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
      shown += escaped;
      ++i;
      continue;
    }
    const std::size_t length = next == nullptr ? 1 : static_cast<std::size_t>(next - (bytes + i));
    shown.append(text, i, length);
    i += length;
  }
  return end < text.size() ? shown + "..." : shown;
}

void DiffReport::add(Difference difference) {
  if (isEnough()) return;
  if (differences_.size() == kMostListed) {
    ++unlisted_;
  } else {
    differences_.push_back(std::move(difference));
  }
}

std::string DiffReport::text(const std::string& left, const std::string& right) const {
  std::string text;
  if (!isSame()) text = "--- " + shownText(left) + "\n+++ " + shownText(right) + '\n';
  for (const Difference& difference : differences_) {
    text += shownText(difference.place);
    if (!difference.left) text += " only in " + shownText(right);
    if (!difference.right) text += " only in " + shownText(left);
    text += '\n';
    for (const std::string& line : difference.before) text += "  " + line + '\n';
    for (const std::string& line : difference.left.value_or(Lines())) text += "- " + line + '\n';
    for (const std::string& line : difference.right.value_or(Lines())) text += "+ " + line + '\n';
  }
  if (unlisted_ > 0) text += "and " + counted(unlisted_, "more difference") + '\n';
  if (isSame()) {
    text +=
        "no difference in " + counted(steps_, "step") + " and " + counted(files_, "file") + '\n';
  }
  for (const std::string& note : notes_) text += "note: " + shownText(note) + '\n';
  return text + timesText();
}

std::string DiffReport::timesText() const {
  if (times_.empty()) return std::string();
  std::size_t width = 0;
  for (const StepTimes& times : times_) width = std::max(width, shownText(times.step).size());
  std::string text = "times of the steps, - and +:\n";
  for (const StepTimes& times : times_) {
    const std::string step = shownText(times.step);
    text += "  " + step + std::string(width - step.size(), ' ');
    text += "  " + padded(secondsText(times.left), 12);
    text += "  " + padded(secondsText(times.right), 12) + '\n';
  }
  return text;
}

Json::Value DiffReport::json(const std::string& left, const std::string& right) const {
  Json::Value json(Json::objectValue);
  json["left"] = left;
  json["right"] = right;
  json["same"] = isSame();
  json["differences"] = Json::Value(Json::arrayValue);
  for (const Difference& difference : differences_) {
    Json::Value& entry = json["differences"].append(Json::Value(Json::objectValue));
    entry["place"] = shownText(difference.place);
    entry["left"] = difference.left ? listOf(*difference.left) : Json::Value();
    entry["right"] = difference.right ? listOf(*difference.right) : Json::Value();
  }
  json["unlisted"] = static_cast<Json::UInt64>(unlisted_);
  json["notes"] = listOf(notes_);
  json["steps"] = static_cast<Json::UInt64>(steps_);
  json["files"] = static_cast<Json::UInt64>(files_);
  json["times"] = Json::Value(Json::arrayValue);
  for (const StepTimes& times : times_) {
    Json::Value& entry = json["times"].append(Json::Value(Json::objectValue));
    entry["step"] = shownText(times.step);
    if (times.left >= 0) entry["left"] = times.left;
    if (times.right >= 0) entry["right"] = times.right;
  }
  return json;
}

}  // namespace libvarrow::host
