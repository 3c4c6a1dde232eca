// Fuzzes text converters: a value that can be read is written as text that reads back as the same
// value; other text throws a parse error.
#include "cppbind/ParseErrorException.h"
#include "cppbind/type/StringConverter.h"
#include "harness.h"
#include "libvarrow/time/time_range.h"

namespace {

// A duration is written without its sign, and its hours are read as two digits.
bool isReadBack(const boost::posix_time::time_duration& value) {
  return value.is_special() || (!value.is_negative() && value < boost::posix_time::hours(100));
}
template <class T>
bool isReadBack(const T&) {
  return true;
}

template <class Text>
void roundTrip(const std::string& text) {
  fuzz::passes<cppbind::ParseErrorException>([&] {
    const auto value = Text::fromString(text);
    const std::string written = Text::toString(value);
    libvarrow::time2str(value);
    libvarrow::time2strIgnoreSecond(value);
    if (!isReadBack(value)) return;
    const auto again = Text::fromString(written);
    fuzz::requireSame(written, Text::toString(again), "written");
    fuzz::require(value == again, "read back");
    // Complete text that ends in a digit is read without streams. A blank after it makes streams
    // read it, which must give the same value.
    if (written == text) fuzz::require(Text::fromString(text + " ") == value, "with a blank");
  });
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  roundTrip<cppbind::BoostGDateText>(text);
  roundTrip<cppbind::BoostPTimeText>(text);
  roundTrip<cppbind::BoostTimeDurationText>(text);
  fuzz::requireSame(cppbind::StringPtrText::toString(cppbind::StringPtrText::fromString(text)),
                    text, "shared string");
  return 0;
}
