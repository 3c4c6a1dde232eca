#include "problem/InstanceReader.h"

#include <libvarrow/utility/UTFConverter.h>
#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <charconv>
#include <fstream>
#include <optional>
#include <utility>
#include <vector>

namespace jobshop {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Reader of the lines that are neither blank nor comments.
class LineReader {
 public:
  LineReader(std::string_view text, const std::string& fileName) : rest_(text), file_(fileName) {
    if (rest_.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
      rest_.remove_prefix(kByteOrderMark.size());
    }
  }

  /// Returns the tokens of the next line; none at the end of the file, where the line number stays.
  std::vector<std::string_view> next() {
    while (!atEnd_) {
      std::vector<std::string_view> tokens = tokensOf(nextLine());
      if (!tokens.empty() && tokens.front().front() != '#') return tokens;
    }
    return {};
  }

  [[noreturn]] void fail(const std::string& expected, const std::string& found) const {
    throw InstanceError(file_ + ":" + std::to_string(lineNumber_) + ": expected " + expected +
                        ", found " + found);
  }

 private:
  std::string_view nextLine() {
    const std::size_t end = rest_.find('\n');
    const std::string_view line = rest_.substr(0, end);
    atEnd_ = end == std::string_view::npos;
    rest_.remove_prefix(atEnd_ ? rest_.size() : end + 1);
    ++lineNumber_;
    return line;
  }

  static std::vector<std::string_view> tokensOf(std::string_view line) {
    std::vector<std::string_view> tokens;
    std::size_t begin = line.find_first_not_of(kBlanks);
    while (begin != std::string_view::npos) {
      const std::size_t end = std::min(line.find_first_of(kBlanks, begin), line.size());
      tokens.push_back(line.substr(begin, end - begin));
      begin = line.find_first_not_of(kBlanks, end);
    }
    return tokens;
  }

  std::string_view rest_;
  const std::string& file_;
  std::size_t lineNumber_ = 0;
  bool atEnd_ = false;
};

// Returns a printable part of a token: a hostile one may be long or contain any bytes.
std::string quoted(std::string_view token) {
  constexpr std::size_t kShown = 32;
  std::string shown(token.substr(0, kShown));
  for (char& c : shown) {
    if (c < ' ' || c > '~') c = '?';
  }
  return "\"" + shown + (token.size() > kShown ? "...\"" : "\"");
}

std::string counted(std::size_t count, const std::string& noun) {
  return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

Time parseNumber(const LineReader& line, std::string_view token, const std::string& what, Time low,
                 Time high) {
  Time number = 0;
  const char* const end = token.data() + token.size();
  const auto [stop, error] = std::from_chars(token.data(), end, number);
  const bool isNumber = error != std::errc::invalid_argument && stop == end;
  const bool inRange = error == std::errc() && number >= low && number <= high;
  if (isNumber && inRange) return number;
  line.fail(what + " from " + std::to_string(low) + " to " + std::to_string(high), quoted(token));
}

std::size_t parseCount(const LineReader& line, std::string_view token, const std::string& what,
                       std::size_t low, std::size_t high) {
  return static_cast<std::size_t>(
      parseNumber(line, token, what, static_cast<Time>(low), static_cast<Time>(high)));
}

std::pair<std::size_t, std::size_t> parseHeader(LineReader& lines) {
  const std::vector<std::string_view> tokens = lines.next();
  if (tokens.size() != 2) {
    lines.fail("two numbers, of jobs and of machines",
               tokens.empty() ? "the end of the file" : counted(tokens.size(), "word"));
  }
  return {parseCount(lines, tokens[0], "a number of jobs", 1, kMaxJobs),
          parseCount(lines, tokens[1], "a number of machines", 1, kMaxMachines)};
}

std::vector<Operation> parseJob(LineReader& lines, std::size_t job, std::size_t jobCount,
                                std::size_t machineCount) {
  const std::vector<std::string_view> tokens = lines.next();
  if (tokens.empty()) {
    lines.fail("the line of job " + std::to_string(job) + " (" + counted(jobCount, "job") +
                   ", the first is job 0)",
               "the end of the file");
  }
  // Reads before counting: an invalid word is reported rather than a line that is too long.
  std::vector<Operation> operations;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    if (i % 2 == 0) {
      operations.push_back({parseCount(lines, tokens[i], "a machine", 0, machineCount - 1), 0});
    } else {
      operations.back().duration = parseNumber(lines, tokens[i], "a time", 0, kMaxDuration);
    }
  }
  if (tokens.size() != 2 * machineCount) {
    lines.fail(counted(2 * machineCount, "number") + " for job " + std::to_string(job) +
                   " (a machine and a time, " + counted(machineCount, "pair") + ")",
               std::to_string(tokens.size()));
  }
  return operations;
}

// Reads at most one block more than is allowed: the file may be an endless device.
std::optional<std::string> readText(const std::string& fileName) {
  std::ifstream file(fileName, std::ios::binary);
  std::string text;
  std::vector<char> block(std::size_t{64} * 1024);
  while (file && text.size() <= kMaxFileSize) {
    file.read(block.data(), static_cast<std::streamsize>(block.size()));
    text.append(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  const bool complete = file.is_open() && !file.bad();
  return complete ? std::optional<std::string>(std::move(text)) : std::nullopt;
}

}  // namespace

Instance parseInstance(std::string_view text, const std::string& fileName) {
  LineReader lines(text, fileName);
  Instance instance;
  instance.name = libvarrow::utility::toUtf8(boost::filesystem::path(fileName).stem().string());
  const auto [jobCount, machineCount] = parseHeader(lines);
  instance.machineCount = machineCount;
  // Grows with the lines that exist, not with the number in the first line.
  for (std::size_t job = 0; job < jobCount; ++job) {
    instance.jobs.push_back(parseJob(lines, job, jobCount, machineCount));
  }
  const std::vector<std::string_view> surplus = lines.next();
  if (!surplus.empty()) {
    lines.fail("the end of the file after " + counted(jobCount, "job"), quoted(surplus.front()));
  }
  return instance;
}

Instance readInstance(const std::string& fileName) {
  const std::optional<std::string> text = readText(fileName);
  if (!text) {
    boost::system::error_code ignored;
    const bool isThere = boost::filesystem::exists(fileName, ignored);
    throw InstanceError(fileName + (isThere ? ": cannot be read" : ": does not exist") +
                        "; expected an instance file");
  }
  if (text->size() > kMaxFileSize) {
    throw InstanceError(fileName + ": expected an instance file of at most " +
                        std::to_string(kMaxFileSize) + " bytes, found a larger one");
  }
  return parseInstance(*text, fileName);
}

}  // namespace jobshop
