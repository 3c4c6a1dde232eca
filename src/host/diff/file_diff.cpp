#include "host/diff/file_diff.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

constexpr std::size_t kBlock = 256 * 1024;
// Longer lines are compared in parts of this size.
constexpr std::size_t kLongestLine = 64 * 1024;
constexpr std::size_t kLinesBefore = 2;
constexpr std::size_t kLinesShown = 3;
constexpr std::size_t kBytesShown = 16;

class InputStream {
 public:
  explicit InputStream(const fs::path& path) : path_(path) {
    stream_.rdbuf()->pubsetbuf(nullptr, 0);  // blocks are large enough
    stream_.open(path.string(), std::ios::binary);
    if (!stream_.is_open()) fail();
  }
  // Fills `block` from its begin and returns the number of bytes, fewer only at the end.
  std::size_t read(std::string& block, std::size_t size) {
    block.resize(size);
    stream_.read(block.data(), static_cast<std::streamsize>(size));
    if (stream_.bad()) fail();
    block.resize(static_cast<std::size_t>(stream_.gcount()));
    return block.size();
  }
  void seek(std::uint64_t offset) {
    stream_.clear();
    stream_.seekg(static_cast<std::streamoff>(offset));
  }

 private:
  [[noreturn]] void fail() const {
    throw std::runtime_error(path_.generic_string() + " cannot be read");
  }

  fs::path path_;
  std::ifstream stream_;
};

// Splits a stream into lines, from an offset on.
class LineReader {
 public:
  LineReader(InputStream& stream, std::uint64_t offset) : stream_(stream) { stream.seek(offset); }

  // Reads the next line with its end, or a part of a long one. Returns false at the end.
  bool next(std::string& line) {
    line.clear();
    while (line.size() < kLongestLine) {
      if (at_ == block_.size()) {
        at_ = 0;
        if (stream_.read(block_, kLongestLine) == 0) break;
      }
      const std::size_t wanted = std::min(block_.size() - at_, kLongestLine - line.size());
      const void* const end = std::memchr(block_.data() + at_, '\n', wanted);
      const std::size_t length =
          end == nullptr
              ? wanted
              : static_cast<std::size_t>(static_cast<const char*>(end) - (block_.data() + at_)) + 1;
      line.append(block_, at_, length);
      at_ += length;
      if (end != nullptr) break;
    }
    return !line.empty();
  }

 private:
  InputStream& stream_;
  std::string block_;
  std::size_t at_ = 0;
};

bool endsLine(const std::string& line) {
  return !line.empty() && line.back() == '\n';
}

std::string withoutEnd(std::string line) {
  if (endsLine(line)) line.pop_back();
  while (!line.empty() && line.back() == '\r') line.pop_back();
  return line;
}

std::size_t commonLength(const std::string& left, const std::string& right) {
  const std::size_t size = std::min(left.size(), right.size());
  if (std::memcmp(left.data(), right.data(), size) == 0) return size;
  return static_cast<std::size_t>(
      std::mismatch(left.begin(), left.begin() + static_cast<std::ptrdiff_t>(size), right.begin())
          .first -
      left.begin());
}

// The first bytes that differ, with the blocks that contain them.
struct Mismatch {
  std::uint64_t offset;
  bool isBinary;
};

std::optional<Mismatch> firstMismatch(InputStream& left, InputStream& right) {
  std::string ofLeft;
  std::string ofRight;
  for (std::uint64_t begin = 0;; begin += kBlock) {
    left.read(ofLeft, kBlock);
    right.read(ofRight, kBlock);
    const std::size_t length = commonLength(ofLeft, ofRight);
    if (length < ofLeft.size() || length < ofRight.size()) {
      const auto isBinary = [](const std::string& block) {
        return std::memchr(block.data(), '\0', block.size()) != nullptr;
      };
      return Mismatch{begin + length, isBinary(ofLeft) || isBinary(ofRight)};
    }
    if (ofLeft.size() < kBlock) return std::nullopt;
  }
}

Lines bytesAt(InputStream& stream, std::uint64_t offset) {
  std::string bytes;
  stream.seek(offset);
  if (stream.read(bytes, kBytesShown) == 0) return {"the end"};
  std::string text;
  for (const char byte : bytes) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    text += (text.empty() ? "" : " ") + std::string(digits);
  }
  return {std::move(text)};
}

Difference ofBytes(InputStream& left, InputStream& right, std::uint64_t offset) {
  return {", byte " + std::to_string(offset), bytesAt(left, offset), bytesAt(right, offset)};
}

std::uint64_t lineCount(InputStream& stream, std::uint64_t size) {
  std::uint64_t count = 0;
  std::string block;
  stream.seek(0);
  for (std::uint64_t at = 0; at < size; at += kBlock) {
    stream.read(block, std::min<std::uint64_t>(kBlock, size - at));
    count += static_cast<std::uint64_t>(std::count(block.begin(), block.end(), '\n'));
  }
  return count;
}

// Compares two texts line by line from an offset up to which they are equal.
class TextDiff {
 public:
  TextDiff(InputStream& left, InputStream& right, const FoldersOfRuns& folders)
      : left_(left), right_(right), folders_(folders) {}

  std::optional<Difference> from(std::uint64_t mismatch) {
    const std::uint64_t begin = beginBefore(mismatch);
    LineReader ofLeft(left_, begin);
    LineReader ofRight(right_, begin);
    std::string left;
    std::string right;
    for (;;) {
      const bool hasLeft = ofLeft.next(left);
      const bool hasRight = ofRight.next(right);
      if (!hasLeft && !hasRight) return std::nullopt;
      if (hasLeft != hasRight || !isSame(left, right)) {
        Lines leftLines = shown(ofLeft, left, right);
        Lines rightLines = shown(ofRight, right, left);
        const std::uint64_t number = lineCount(left_, begin) + lines_ + 1;
        return Difference{":" + std::to_string(number), std::move(leftLines), std::move(rightLines),
                          std::move(before_)};
      }
      keep(left);
    }
  }

 private:
  // Returns the begin of the line of `mismatch`, or a place in it if it is long. Keeps the lines
  // before.
  std::uint64_t beginBefore(std::uint64_t mismatch) {
    std::string text;
    const std::uint64_t from = mismatch - std::min<std::uint64_t>(mismatch, kLongestLine);
    left_.seek(from);
    left_.read(text, static_cast<std::size_t>(mismatch - from));
    const std::size_t end = text.rfind('\n');
    if (end == std::string::npos) return from;
    text.resize(end + 1);
    std::size_t begin = end;
    for (std::size_t i = 1; i < kLinesBefore && begin != std::string::npos && begin > 0; ++i) {
      begin = text.rfind('\n', begin - 1);
    }
    const std::size_t first =
        begin == std::string::npos || begin == 0 ? std::string::npos : text.rfind('\n', begin - 1);
    for (std::size_t at = first == std::string::npos ? 0 : first + 1; at < text.size();) {
      const std::size_t next = text.find('\n', at) + 1;
      before_.push_back(shownText(withoutEnd(text.substr(at, next - at))));
      at = next;
    }
    return from + end + 1;
  }

  bool isSame(const std::string& left, const std::string& right) const {
    if (left == right) return true;
    if (endsLine(left) != endsLine(right)) return false;
    return folders_.isSame(withoutEnd(left), withoutEnd(right));
  }

  void keep(const std::string& line) {
    if (!endsLine(line)) return;
    ++lines_;
    before_.push_back(shownText(withoutEnd(line)));
    if (before_.size() > kLinesBefore) before_.erase(before_.begin());
  }

  // Returns a line and those after it; the first is cut around its difference from `other`.
  static Lines shown(LineReader& reader, std::string line, const std::string& other) {
    Lines lines;
    std::size_t at = commonLength(line, other);
    if (line.empty()) return {"the end"};
    do {
      const bool isLast = !endsLine(line);
      lines.push_back(shownText(withoutEnd(line), at));
      if (isLast && line.size() < kLongestLine) lines.back() += "  (no line end)";
      at = 0;
    } while (lines.size() < kLinesShown && reader.next(line));
    return lines;
  }

  InputStream& left_;
  InputStream& right_;
  const FoldersOfRuns& folders_;
  Lines before_;
  std::uint64_t lines_ = 0;  // that were read and are equal
};

}  // namespace

std::optional<Difference> fileDifference(const fs::path& left, const fs::path& right,
                                         const FoldersOfRuns& folders) {
  InputStream leftStream(left);
  InputStream rightStream(right);
  const auto mismatch = firstMismatch(leftStream, rightStream);
  if (!mismatch) return std::nullopt;
  if (mismatch->isBinary) return ofBytes(leftStream, rightStream, mismatch->offset);
  return TextDiff(leftStream, rightStream, folders).from(mismatch->offset);
}

}  // namespace libvarrow::host
