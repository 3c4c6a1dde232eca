#include "host/page/write_page.h"

#include <boost/filesystem/operations.hpp>
#include <string>
#include <string_view>

#include "host/RunReader.h"
#include "host/RunRecord.h"
#include "host/file_text.h"
#include "host/page/page_parts.h"
#include "host/page/run_links.h"
#include "host/page/script_json.h"
#include "libvarrow/json/json.h"

namespace libvarrow::host {

namespace {

namespace fs = boost::filesystem;

// Returns the content of a file; empty without it, as a run may end before it has its files.
std::string contentOf(const fs::path& file) {
  std::string text;
  return readFile(file, text).empty() ? text : std::string();
}

void appendData(std::string& html, const char* id, const std::string& json) {
  html += "<script type=\"application/json\" id=\"";
  html.append(id).append("\">");
  appendScriptJson(html, json);
  html += "</script>\n";
}

// Appends the complete lines of a file of JSON lines as a list with one line for each, so that the
// page can leave out a line that is not JSON.
void appendLines(std::string& html, const char* id, const std::string& lines) {
  html += "<script type=\"application/json\" id=\"";
  html.append(id).append("\">[");
  const char* separator = "";
  for (std::size_t begin = 0, end = 0; (end = lines.find('\n', begin)) != std::string::npos;
       begin = end + 1) {
    html += separator;
    appendScriptJson(html, std::string_view(lines).substr(begin, end - begin));
    separator = ",\n";
  }
  html += "]</script>\n";
}

}  // namespace

fs::path writePage(const fs::path& folder, const Json::Value& record) {
  const std::string steps = contentOf(folder / RunReader::kSteps);
  const std::string statistics = contentOf(folder / RunReader::kStatistics);
  std::string html(kPageBeforeData);
  html.reserve(html.size() + kPageAfterData.size() + 2 * (steps.size() + statistics.size()));
  appendData(html, "run", Json2Str(record));
  appendLines(html, "steps", steps);
  appendData(html, "statistics", statistics.empty() ? "null" : statistics);
  appendData(html, "links", Json2Str(runLinks(folder, record)));
  html += kPageAfterData;
  const fs::path page = fs::canonical(folder) / kPageFile;
  writeWhole(page, html);
  return page;
}

}  // namespace libvarrow::host
