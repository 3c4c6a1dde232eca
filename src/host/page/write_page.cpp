#include "host/page/write_page.h"

#include <boost/filesystem/operations.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "host/RunReader.h"
#include "host/RunRecord.h"
#include "host/file_text.h"
#include "host/page/page_parts.h"
#include "host/page/script_json.h"
#include "host/run_file_names.h"
#include "libvarrow/json/json.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// Returns the content of a file; empty without it, as a run may end before it has its files.
std::string contentOf(const fs::path& file) {
  std::string text;
  if (!readFileOfRun(file, text).empty()) text.clear();
  return text;
}

template <class Texts>
std::size_t sizeOf(const Texts& texts) {
  std::size_t size = 0;
  for (const std::string_view text : texts) size += text.size();
  return size;
}

void append(std::string& html, const PagePart& part) {
  for (const std::string_view piece : part) html += piece;
}

// An element whose text is JSON. A script of the page reads it.
class DataElement {
 public:
  DataElement(std::string& html, const char* id) : html_(html) {
    html_.append("<script type=\"application/json\" id=\"").append(id).append("\">");
  }
  ~DataElement() { html_ += "</script>\n"; }
  DataElement(const DataElement&) = delete;
  DataElement& operator=(const DataElement&) = delete;

 private:
  std::string& html_;
};

void appendData(std::string& html, const char* id, const std::string& json) {
  const DataElement element(html, id);
  appendScriptJson(html, json);
}

// Appends the complete lines of a file of JSON lines as a list with one line for each, so that the
// page can leave out a line that is not JSON.
void appendLines(std::string& html, const char* id, const std::string& lines) {
  const DataElement element(html, id);
  const char* separator = "[";
  for (std::size_t begin = 0, end = 0; (end = lines.find('\n', begin)) != std::string::npos;
       begin = end + 1) {
    html += separator;
    appendScriptJson(html, std::string_view(lines).substr(begin, end - begin));
    separator = ",\n";
  }
  html += *separator == '[' ? "[]" : "]";
}

void appendPictures(std::string& html, const std::vector<std::string>& pictures) {
  const DataElement element(html, "pictures");
  const char* separator = "[";
  for (const std::string& picture : pictures) {
    html.append(separator).append("\"").append(picture).append("\"");
    separator = ",";
  }
  html += *separator == '[' ? "[]" : "]";
}

}  // namespace

fs::path writePage(const fs::path& folder, const RunFiles& files) {
  const fs::path real = fs::canonical(folder);
  const RunLinks links = runLinks(real, files);
  const fs::path page = real / kPageFile;
  const std::string run = contentOf(real / kRecordFile);
  const std::string steps = contentOf(real / kStepsFile);
  const std::string statistics = contentOf(real / kStatisticsFile);
  std::string html;
  html.reserve(sizeOf(kPageBeforeData) + sizeOf(kPageAfterData) + run.size() + steps.size() +
               statistics.size() + sizeOf(links.pictures) + 10'000);
  append(html, kPageBeforeData);
  appendData(html, "run", run);
  appendLines(html, "steps", steps);
  appendData(html, "statistics", statistics.empty() ? "null" : statistics);
  appendData(html, "links", Json2Str(links.json));
  appendPictures(html, links.pictures);
  append(html, kPageAfterData);
  writeWhole(page, html);
  return page;
}

}  // namespace libvarrow::host
