#include "libvarrow/json/json.h"

#include <boost/current_function.hpp>
#include <boost/filesystem/operations.hpp>
#include <stdexcept>
#include <utility>

#include "base/json_text.h"
#include "base/system_text.h"
#include "base/text_file.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow {

namespace {

[[noreturn]] void logAndThrow(const std::string& message) {
  LIBVARROW_LOG_ERROR("%s", message.c_str());
  throw std::runtime_error(message);
}

// Collects comments, as Json2Str writes them again.
bool parseWithComments(const std::string& text, Json::Value& value, std::string& errors) {
  return base::json_text::parse(text, value, errors, base::json_text::Comments::Collected);
}

// The first call fixes the initial directory: this one runs when the library is loaded.
// NOLINTNEXTLINE(cert-err58-cpp): it is noexcept; without memory the process ends
[[maybe_unused]] const bool initialPathTaken = []() noexcept {
  boost::system::error_code ignored;
  return !boost::filesystem::initial_path(ignored).empty();
}();

}  // namespace

Json::Value File2Json(const boost::filesystem::path& path) {
  std::string text;
  base::readTextFile(path.string(), text);  // an unreadable file parses as empty text
  Json::Value value;
  std::string errors;
  if (!parseWithComments(text, value, errors)) {
    LIBVARROW_LOG_ERROR("Failed to parse, %s, %s\n", path.generic_string().c_str(), errors.c_str());
    throw std::runtime_error(path.generic_string() + errors);
  }
  return value;
}

Json::Value Str2Json(const std::string& text) {
  Json::Value value;
  std::string errors;
  if (!parseWithComments(text, value, errors)) {
    LIBVARROW_LOG_ERROR("Failed to parse, %s\n", errors.c_str());
    throw std::runtime_error(errors);
  }
  return value;
}

// Indents by one space, unlike the info of a pipeline's data, which is indented by tabs.
std::string Json2Str(const Json::Value& value) {
  return base::json_text::styled(value, " ");
}

namespace utility {

namespace {

base::TextWritten writeUtf8(const std::string& path, const std::string& text) {
  if (base::isSameInUtf8(text)) return base::writeTextFile(path, text);
  return base::writeTextFile(path, toUtf8(text));
}

}  // namespace

std::string readUTF8File(std::string path) {
  boost::system::error_code ignored;
  if (!boost::filesystem::exists(path, ignored)) {
    logAndThrow(std::string(BOOST_CURRENT_FUNCTION) + " file:" + path + "not exist!");
  }
  std::string text;
  if (!base::readTextFile(path, text)) {
    logAndThrow(std::string(BOOST_CURRENT_FUNCTION) + " file:" + path + " can not be read!");
  }
  return fromUtf8(std::move(text));
}

void writeFileForUTF8(const std::string& path, const std::string& text) {
  boost::system::error_code error;
  boost::filesystem::path absolute = path;
  if (!absolute.is_absolute()) {
    absolute = boost::filesystem::absolute(path, boost::filesystem::initial_path(error));
  }
  // The directory usually exists, so it is looked for only when the file cannot be opened.
  if (writeUtf8(absolute.string(), text) != base::TextWritten::NotOpened) return;
  const boost::filesystem::path directory = absolute.parent_path();
  if (boost::filesystem::exists(directory, error)) return;
  boost::filesystem::create_directories(directory, error);
  if (error) {
    logAndThrow(std::string(BOOST_CURRENT_FUNCTION) + " create dir " + directory.generic_string() +
                "failed for :" + error.message());
  }
  writeUtf8(absolute.string(), text);
}

void writeFileForUTF8(const std::string& path, const char* text) {
  writeFileForUTF8(path, std::string(text));
}

void writeFileForUTF8(const std::string& path, const Json::Value& value) {
  writeFileForUTF8(path, base::json_text::fast(value));
}

}  // namespace utility

}  // namespace libvarrow
