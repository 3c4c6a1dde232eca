// The page of a run: report.html.
#include "host/modules.h"
#include "host/program.h"

namespace host_test {
namespace {

constexpr const char* kEnd = "</script>";

// Returns the text of an element with data, and removes it from `html`.
std::string takeData(std::string& html, const std::string& id) {
  const std::string mark = "id=\"" + id + "\">";
  const std::size_t begin = html.find(mark);
  if (begin == std::string::npos) return "no " + id;
  const std::size_t end = html.find(kEnd, begin);
  const std::string data = html.substr(begin + mark.size(), end - begin - mark.size());
  html.erase(begin, end - begin);
  return data;
}

// Returns the data of a page by its ids. Fails if the data has a character that HTML interprets.
std::map<std::string, Json::Value> dataOf(std::string& html) {
  std::map<std::string, Json::Value> data;
  for (const char* id : {"run", "steps", "statistics", "links", "pictures"}) {
    const std::string text = takeData(html, id);
    EXPECT_EQ(std::string::npos, text.find_first_of("<>&\t")) << id;
    data[id] = json(text);
  }
  return data;
}

class Page : public InTemporaryDirectory {};

TEST_F(Page, EveryRunHasItsData) {
  writePipeline(act("write", "o.txt") + ", " + act("report", "late & <b>"));
  EXPECT_EQ(3, orders({"run", "p.json", "--out", "run"}).exitCode);
  std::string html = readFile("run/report.html");
  auto data = dataOf(html);
  EXPECT_EQ(libvarrow::File2Json("run/run.json"), data["run"]);
  EXPECT_EQ(libvarrow::File2Json("run/statistics.json"), data["statistics"]);
  EXPECT_EQ("o.txt", data["links"]["files"][0]["link"].asString());
  EXPECT_FALSE(data["links"]["files"][0].isMember("picture"));
  EXPECT_EQ(3, orders({"run", "p.json", "--out", "run", "--overwrite"}).exitCode);
  writePipeline(act("write", "report.html"));
  EXPECT_TRUE(contains(orders({"run", "p.json", "--out", "own"}).errors, "is a file of the run"));
}

TEST_F(Page, TextsOfARunCannotLeaveTheirPlaceInThePage) {
  writeFile("run/run.json", R"({"libvarrow_run": 1, "error": "x"})");
  orders({"report", "run"});
  std::string plain = readFile("run/report.html");
  dataOf(plain);
  const std::string hostile = R"(</script><!--<script>\" &amp; \\</script>)";
  const std::string meant = R"(</script><!--<script>" &amp; \</script>)";
  const std::string invalid = "a\xFF\xC0\xAF\xED\xA0\x80\xE2\x82";
  std::string replaced = "a";
  for (int i = 0; i < 8; ++i) replaced += "\xEF\xBF\xBD";
  writeFile("run/run.json",
            R"({"libvarrow_run": 1, "outcome": "running", "error": ")" + hostile + "\"}");
  const std::string line = R"({"event": "begin", "step": ")" + hostile + "\"}";
  writeFile("run/steps.jsonl", line + "\n" + line + "\n" + line.substr(0, 40));
  writeFile("run/statistics.json", "{\"" + invalid + "\": \"\xE2\x82\xAC\t" + hostile + "\"}");
  const ChildResult result = orders({"report", "run", "--json"});
  EXPECT_EQ(0, result.exitCode) << result.errors;
  const std::string page = json(result.output)["page"].asString();
  EXPECT_EQ((fs::canonical("run") / "report.html").generic_string(), page);
  std::string html = readFile(page);
  auto data = dataOf(html);
  EXPECT_EQ(plain, html);
  EXPECT_EQ(meant, data["run"]["error"].asString());
  EXPECT_EQ(2u, data["steps"].size());
  EXPECT_EQ(meant, data["steps"][1]["step"].asString());
  EXPECT_EQ("\xE2\x82\xAC\t" + meant, data["statistics"][replaced].asString());
  EXPECT_LT(html.size(), 100'000u);
}

TEST_F(Page, PicturesOfTheRunFolderAreInThePage) {
  fs::create_directory("run");
  const std::string run = fs::canonical("run").generic_string();
  writeFile("run/a.svg", "<svg/>");
  writeFile("run/b.png", "ab");
  writeFile("run/large.jpg", std::string(5'000'000, 'x'));
  writeFile("secret.png", "[1]");
  boost::system::error_code unsupported;
  for (const char* link : {"link.png", "statistics.json", "report.html.writing"}) {
    fs::create_symlink(fs::absolute("secret.png"), std::string("run/") + link, unsupported);
  }
  std::string files;
  for (const char* path : {"/a.svg", "/b.png", "/large.jpg", "/link.png", "/../secret.png"}) {
    files +=
        std::string(files.empty() ? "" : ", ") + R"({"kind": "a", "path": ")" + run + path + "\"}";
  }
  writeFile("run/run.json",
            R"({"libvarrow_run": 1, "folder": ")" + run + R"(", "files": [)" + files + "]}");
  fs::rename("run", "moved");
  EXPECT_EQ(0, orders({"report", "moved"}).exitCode);
  std::string html = readFile("moved/report.html");
  auto data = dataOf(html);
  EXPECT_EQ(json(R"(["data:image/svg+xml;base64,PHN2Zy8+", "data:image/png;base64,YWI="])"),
            data["pictures"]);
  EXPECT_TRUE(data["statistics"].isNull());
  EXPECT_EQ("[1]", readFile("secret.png"));
  EXPECT_EQ("large.jpg", data["links"]["files"][2]["link"].asString());
  EXPECT_FALSE(data["links"]["files"][4].isMember("link"));
}

TEST_F(Page, APageThatCannotBeWrittenIsAWarning) {
  writePipeline(act("print"));
  struct Blocks : libvarrow::RunObserver {
    void stepEnds(libvarrow::Module&, libvarrow::ModuleData&) override {
      writeFile("run/report.html/file", "");
    }
  } blocks;
  libvarrow::Host host("orders", "");
  registerOrders(host);
  libvarrow::RunOptions options;
  options.pipeline = "p.json";
  options.folder = "run";
  options.observer = &blocks;
  Orders data;
  EXPECT_EQ("", host.execute(options, data).error);
  EXPECT_EQ("done", outcome("run"));
  EXPECT_FALSE(fs::exists("run/report.html.writing"));
  const ChildResult report = orders({"report", "run"});
  EXPECT_EQ(1, report.exitCode);
  EXPECT_TRUE(contains(report.errors, "cannot write ")) << report.errors;
}

}  // namespace
}  // namespace host_test
