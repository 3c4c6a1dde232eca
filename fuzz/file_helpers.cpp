// Fuzzes text conversion and file names with arbitrary bytes.
#include <boost/filesystem/operations.hpp>

#include "harness.h"
#include "libvarrow/json/json.h"
#include "libvarrow/utility/UTFConverter.h"
#include "libvarrow/utility/file_name.h"
#include "libvarrow/utility/text.h"

namespace {

using namespace libvarrow;

void convertText(const std::string& text) {
  const std::string valid = utility::toUtf8(text);
  fuzz::requireSame(valid, utility::toUtf8(valid), "valid UTF-8 stays");
  fuzz::requireSame(utility::fromUtf8(text), valid, "both ways drop the same");
  const std::string file = fuzz::scratch("text.txt");
  utility::writeFileForUTF8(file, text);
  fuzz::requireSame(utility::readUTF8File(file), valid, "through a file");
  std::string prefixed = PrefixOnEachLine("\n", text);
  fuzz::require(prefixed.size() >= text.size(), "prefixed lines");
}

void adjustName(const std::string& text) {
  std::string name = text;
  utility::adjustFileName(name);
  fuzz::require(!name.empty() && name.front() == '/', "absolute");
  const std::string extension = boost::filesystem::path(text).extension().string();
  const std::string file = name.substr(name.rfind('/') + 1);
  fuzz::require(file.size() <= std::max<std::size_t>(255, extension.size()), "file name fits");
  // Not repeatable: a null character ends an extension; cutting "x." may leave only the directory;
  // the file system library takes "//x" for a host name.
  if (text.find('\0') != std::string::npos || name.back() == '.') return;
  if (text.compare(0, 2, "//") == 0) return;
  std::string again = name;
  utility::adjustFileName(again);
  fuzz::requireSame(name, again, "adjusted twice");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = fuzz::textOf(data, size);
  convertText(text);
  adjustName(text);
  return 0;
}
