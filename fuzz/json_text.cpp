// Any bytes as JSON text: every reader takes or refuses it alike, also under a locale with decimal
// commas, and what is written of it reads back as the same value.
#include "cppbind/imp/binder.h"
#include "harness.h"
#include "libvarrow/json/json.h"
#include "support/CommaLocale.h"

namespace {

struct Reading {
  bool isJson = false;
  Json::Value value;
};

template <class Read>
Reading readingOf(Read read) {
  Reading reading;
  reading.isJson = fuzz::passes([&] { reading.value = read(); });
  return reading;
}

void requireSame(const Reading& one, const Reading& other, const char* what) {
  fuzz::require(one.isJson == other.isJson && one.value == other.value, what);
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  const std::string file = fuzz::writeScratch("text.json", text);
  const Reading plain = readingOf([&] { return libvarrow::Str2Json(text); });
  requireSame(plain, readingOf([&] { return libvarrow::File2Json(file); }), "File2Json");
  requireSame(plain, readingOf([&] { return cppbind::readJsonFile(file); }), "readJsonFile");
  const auto written = [&] { return libvarrow::Json2Str(plain.value); };
  std::string writtenWithCommas;
  {
    const test_support::CommaLocale locale;
    requireSame(plain, readingOf([&] { return libvarrow::Str2Json(text); }),
                "under a comma locale");
    writtenWithCommas = written();
  }
  if (!plain.isJson) return 0;
  fuzz::requireSame(written(), writtenWithCommas, "written under a comma locale");
  const Json::Value once = libvarrow::Str2Json(written());
  const Json::Value twice = libvarrow::Str2Json(libvarrow::Json2Str(once));
  fuzz::require(once == twice, "read back");
  libvarrow::utility::writeFileForUTF8(file, once);
  fuzz::require(libvarrow::File2Json(file) == once, "on one line");
  return 0;
}
