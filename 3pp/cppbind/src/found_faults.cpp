#include "found_faults.h"

#include <functional>
#include <iterator>
#include <utility>

#include "cppbind/TextPositions.h"

namespace cppbind::detail {

namespace {

constexpr std::size_t kNone = JsonPlaces::kNone;

std::uint64_t combined(std::uint64_t hash, std::uint64_t next) {
  return (hash ^ next) * 0x9E3779B97F4A7C15U + (hash >> 29);
}

std::uint64_t hashOf(const std::vector<std::string>& path) {
  std::uint64_t hash = path.size();
  for (const std::string& element : path) {
    hash = combined(hash, std::hash<std::string>()(element));
  }
  return hash;
}

}  // namespace

bool FoundFaults::isNew(std::size_t offset, const Path& path, const Path* keyPath) {
  const std::uint64_t key = keyPath == nullptr ? 0 : hashOf(*keyPath);
  return known_.insert(combined(combined(hashOf(path), key), offset)).second;
}

void FoundFaults::add(Fault fault, const Path* keyPath) {
  const JsonPlaces::Place place = places_.find(keyPath != nullptr ? *keyPath : fault.path);
  // A key that does not exist was a host's own; the fault is at the value that has it.
  const bool isAtKey = keyPath != nullptr && place.depth == keyPath->size() && place.key != kNone;
  const std::size_t offset = isAtKey ? place.key : place.value;
  if (!isNew(offset, fault.path, keyPath)) return;
  list(offset, std::move(fault));
}

void FoundFaults::addAt(std::size_t offset, Fault fault) {
  list(offset, std::move(fault));
}

bool FoundFaults::isListed(std::size_t offset) const {
  return first_.size() < Faults::kMaxListed || offset < std::prev(first_.end())->first;
}

void FoundFaults::list(std::size_t offset, Fault fault) {
  ++(fault.severity == Severity::Error ? errorCount_ : warningCount_);
  if (!isListed(offset)) return;
  first_.emplace(offset, std::move(fault));
  if (first_.size() > Faults::kMaxListed) first_.erase(std::prev(first_.end()));
}

void FoundFaults::add(const CaughtFault& caught, Path path) {
  visitFaults(caught, std::move(path),
              [this](const Path& whole, const CaughtFault& fault) { addOne(fault, whole); });
}

void FoundFaults::addOne(const CaughtFault& caught, const Path& path) {
  Fault fault{Severity::Error, path, caught.message};
  const FaultNotes* const notes = caught.notes.get();
  if (notes == nullptr) return add(std::move(fault), nullptr);
  fault.hint = notes->hint;
  if (notes->keyPath.empty()) return add(std::move(fault), nullptr);
  Path keyPath = path;
  keyPath.resize(path.size() - notes->pathLength);
  keyPath.insert(keyPath.end(), notes->keyPath.begin(), notes->keyPath.end());
  add(std::move(fault), &keyPath);
}

void FoundFaults::addWarningsOfText() {
  for (const std::size_t offset : places_.repeatedKeys()) {
    // The path takes a walk through the whole text.
    Path path = isListed(offset) ? places_.pathTo(offset) : Path();
    list(offset,
         {Severity::Warning, std::move(path), "the key is given twice; the last one counts"});
  }
  const std::size_t after = places_.textAfterValue();
  if (after == kNone) return;
  list(after, {Severity::Warning, {}, "text after the value is ignored"});
}

Faults FoundFaults::result() const {
  Faults result{{}, errorCount_, warningCount_};
  if (first_.empty()) return result;
  const TextPositions positions(places_.text());
  for (const auto& [offset, fault] : first_) {
    result.first.push_back(fault);
    if (offset == kNone) continue;
    const TextPosition position = positions.at(offset);
    result.first.back().line = position.line;
    result.first.back().column = position.column;
  }
  return result;
}

}  // namespace cppbind::detail
