// Fuzzes JSON text: all readers accept or reject it alike, also under a locale with decimal commas,
// a value that was read and written reads back as the same value, and every value is found at its
// place.
#include <optional>

#include "cppbind/JsonPlaces.h"
#include "cppbind/TextPositions.h"
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

// Restores `path`, which leads to `json`.
void requirePlaces(const cppbind::JsonPlaces& places, const Json::Value& json,
                   std::vector<std::string>& path) {
  const cppbind::JsonPlaces::Place place = places.find(path);
  fuzz::require(place.depth == path.size(), "path of a value");
  fuzz::require(places.pathTo(place.value) == path, "path of a place");
  for (auto child = json.begin(); child != json.end(); ++child) {
    path.push_back(json.isArray() ? "[" + std::to_string(child.index()) + "]" : child.name());
    requirePlaces(places, *child, path);
    path.pop_back();
  }
  // Text inside lists and objects would be read once for each of them.
  if (json.size() > 0) return;
  fuzz::require(libvarrow::Str2Json(places.text().substr(place.value)) == json, "place");
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
  const cppbind::JsonPlaces places(text);
  const cppbind::TextPositions positions(text);
  for (std::size_t offset = 0; offset <= text.size(); ++offset) positions.at(offset);
  if (!plain) return 0;
  std::vector<std::string> path;
  requirePlaces(places, *plain, path);
  const Json::Value once = libvarrow::Str2Json(writtenPlainly);
  const Json::Value twice = libvarrow::Str2Json(libvarrow::Json2Str(once));
  fuzz::require(once == twice, "read back");
  libvarrow::utility::writeFileForUTF8(file, once);
  fuzz::require(libvarrow::File2Json(file) == once, "on one line");
  return 0;
}
