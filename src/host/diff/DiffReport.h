// The differences of two runs.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace libvarrow::host {

/// Lines of a text, or the text of a value.
using Lines = std::vector<std::string>;

/// A place in which two runs differ.
struct Difference {
  std::string place;           ///< "2_Plan: figures after: late", "pipeline: modules[2].Plan.tries"
  std::optional<Lines> left;   ///< absent: only the right run has the place
  std::optional<Lines> right;  ///< absent: only the left run has it
  Lines before{};              ///< equal lines before the place
};

/// The time of one step in both runs, in seconds; negative: unknown.
struct StepTimes {
  std::string step;
  double left;
  double right;
};

/// Collects the differences of two runs: the first, or all up to a limit of memory. All texts are
/// UTF-8, except lines of files in other encodings.
class DiffReport {
 public:
  explicit DiffReport(bool all) : all_(all) {}

  /// Adds a difference, unless the first is enough.
  void add(Difference difference);
  /// Adds a fact that is not a difference.
  void note(std::string text) { notes_.push_back(std::move(text)); }
  void add(StepTimes times) { times_.push_back(std::move(times)); }
  void countStep() { ++steps_; }
  void countFile() { ++files_; }

  /// Returns true when no further difference is wanted.
  bool isEnough() const { return !all_ && !isSame(); }
  /// Returns true when all differences are wanted.
  bool wantsAll() const { return all_; }
  bool isSame() const { return differences_.empty(); }
  const std::vector<Difference>& differences() const { return differences_; }
  const Lines& notes() const { return notes_; }

  ///@{
  /// Returns the report for users or for programs. The names are those of the two runs.
  std::string text(const std::string& left, const std::string& right) const;
  Json::Value json(const std::string& left, const std::string& right) const;
  ///@}

 private:
  std::string timesText() const;

  const bool all_;
  std::vector<Difference> differences_;
  std::size_t unlisted_ = 0;
  Lines notes_;
  std::vector<StepTimes> times_;
  std::size_t steps_ = 0;
  std::size_t files_ = 0;
};

/// Returns `text` for one line of a terminal: bytes that are control characters or not UTF-8 are
/// written as \x1B. Longer texts are cut around the byte `at`.
std::string shownText(const std::string& text, std::size_t at = 0);

}  // namespace libvarrow::host
