// Finds where in a JSON text a value or key is.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "cppbind/Export.h"

namespace cppbind {

/// Index of the values and keys of a JSON text. It agrees with the library's readers: comments and
/// a byte order mark are allowed, of equal keys in an object the last counts, and text after the
/// value is not read.
///
/// Any text is accepted. If it is not JSON, the index contains the values before the first error.
/// Places are offsets of bytes; TextPositions converts them into lines and columns.
///
///     const cppbind::JsonPlaces places(text);
///     const auto place = places.find(error.path());   // of a ParseErrorException
///     const auto position = cppbind::TextPositions(places.text()).at(place.value);
///
/// Creating it takes O(n log n) at most, O(n) for objects of few keys. Besides the text it keeps 4
/// bytes for each byte of usual text and needs 12 meanwhile; of hostile text 40 and 170, whatever
/// its nesting. Copies share the index. Thread-safe.
class JsonPlaces {
 public:
  /// Offset that means "none".
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// The place of the innermost value on a path.
  struct Place {
    /// The number of elements of the path that exist. Less than its length if a key or element is
    /// missing; the place is then that of the innermost value that exists.
    std::size_t depth;
    /// Where the value's key begins, at its quotation mark. kNone for elements of lists and for the
    /// outermost value.
    std::size_t key;
    /// Where the value begins. 0 if the text has no value.
    std::size_t value;
  };

  /// Indexes `text`.
  CPPBIND_API explicit JsonPlaces(std::string text);

  ///@{
  /// Shares the index. Moving copies, so that the source remains valid.
  JsonPlaces(const JsonPlaces& other) = default;
  JsonPlaces& operator=(const JsonPlaces& other) = default;
  ///@}

  ///@{
  /// Returns the indexed text, which lives as long as the object or a copy of it.
  const std::string& text() const& noexcept { return textOfIndex(); }
  const std::string& text() const&& = delete;
  ///@}

  /// Returns the place of the value at `path`, as ParseErrorException::path() names it. "[2]" is an
  /// index if the value before it is a list, a key if that is an object. O(log n) for each element.
  CPPBIND_API Place find(const std::vector<std::string>& path) const;

  ///@{
  /// Returns, in ascending order, the offsets of repeated keys: all occurrences in an object except
  /// the first. They live as long as the object or a copy of it.
  const std::vector<std::size_t>& repeatedKeys() const& noexcept { return repeatedKeysOfIndex(); }
  const std::vector<std::size_t>& repeatedKeys() const&& = delete;
  ///@}

  /// Returns the path to the key or value that begins at `offset`, as find() takes it. If none
  /// begins there, returns the path to the last one that begins before it. O(n) for each call.
  CPPBIND_API std::vector<std::string> pathTo(std::size_t offset) const;

  /// Returns where text begins that follows the whole value and is not a comment, kNone if there is
  /// no such text. The readers ignore it.
  CPPBIND_API std::size_t textAfterValue() const noexcept;

 private:
  struct Index;
  class Builder;

  // Separate, because GCC does not export functions with a ref-qualifier.
  CPPBIND_API const std::string& textOfIndex() const noexcept;
  CPPBIND_API const std::vector<std::size_t>& repeatedKeysOfIndex() const noexcept;

  std::shared_ptr<const Index> index_;
};

}  // namespace cppbind
