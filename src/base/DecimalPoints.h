// JSON without decimal points, for a parser that reads numbers in the global locale.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace libvarrow::base::json_text {

/// JSON text with rewritten numbers, 12.50e3 as 1250e1: the same numbers, to the last bit.
class WithoutDecimalPoints {
 public:
  explicit WithoutDecimalPoints(std::string original);

  /// Returns the text to parse in place of the original.
  const std::string& text() const { return text_; }

  /// Returns the parser's formatted messages about text() with the lines, columns and numbers of
  /// the original.
  std::string aboutOriginal(const std::string& messages) const;

 private:
  // A number's range in the original and in the text.
  struct Number {
    std::size_t begin, end;
    std::size_t newBegin, newEnd;
  };

  const Number* lastNumberAt(std::size_t newPosition) const;
  std::size_t originalOf(std::size_t newPosition) const;
  void nameOriginal(const Number& number, std::string& message) const;

  std::string original_;
  std::string text_;
  std::vector<Number> numbers_;  // those that changed
};

}  // namespace libvarrow::base::json_text
