// Fuzzes JSON text: all readers accept or reject it alike, also under a locale with decimal commas,
// and a value that was read and written reads back as the same value.
#include <optional>

#include "cppbind/imp/binder.h"
#include "harness.h"
#include "libvarrow/json/json.h"
#include "support/CommaLocale.h"

namespace {

using Reading = std::optional<Json::Value>;  // empty for rejected text

template <class Read>
Reading readingOf(Read read) {
  Reading reading;
  fuzz::passes([&] { reading = read(); });
  return reading;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const std::string file = fuzz::writeScratch("text.json", text);
  const auto read = [&] { return readingOf([&] { return libvarrow::Str2Json(text); }); };
  const Reading plain = read();
  fuzz::require(plain == readingOf([&] { return libvarrow::File2Json(file); }), "File2Json");
  fuzz::require(plain == readingOf([&] { return cppbind::readJsonFile(file); }), "readJsonFile");
  const auto written = [&] { return libvarrow::Json2Str(plain.value_or(Json::Value())); };
  const std::string writtenPlainly = written();
  {
    const test_support::CommaLocale locale;
    fuzz::require(plain == read(), "under a comma locale");
    fuzz::requireSame(writtenPlainly, written(), "written under a comma locale");
  }
  if (!plain) return 0;
  const Json::Value once = libvarrow::Str2Json(writtenPlainly);
  const Json::Value twice = libvarrow::Str2Json(libvarrow::Json2Str(once));
  fuzz::require(once == twice, "read back");
  libvarrow::utility::writeFileForUTF8(file, once);
  fuzz::require(libvarrow::File2Json(file) == once, "on one line");
  return 0;
}
