// Run folders: the folders that a run may replace, and the places of its files.
#include "host/modules.h"
#include "host/program.h"

namespace host_test {
namespace {

using namespace libvarrow::utility;

class RunFolders : public InTemporaryDirectory {
 public:
  RunFolders() { writePipeline(act("write", "orders.txt")); }

  std::string errorOfRun(const std::string& folder, bool overwrite,
                         libvarrow::RunObserver* observer = nullptr) {
    libvarrow::RunOptions options;
    options.pipeline = "p.json";
    options.folder = folder;
    options.overwrite = overwrite;
    options.observer = observer;
    Orders data;
    return host_.execute(options, data).error;
  }

 private:
  struct WithModules : libvarrow::Host {
    WithModules() : Host("orders", "") { registerOrders(*this); }
  };
  WithModules host_;
};

// Every path below a folder, with its content.
std::map<std::string, std::string> contentOf(const fs::path& folder) {
  std::map<std::string, std::string> content;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    const bool isFile = fs::is_regular_file(entry.symlink_status());
    content[entry.path().generic_string()] = isFile ? readFile(entry.path()) : "";
  }
  return content;
}

TEST_F(RunFolders, NothingButAnEarlierRunIsReplaced) {
  writeFile("file", "");
  writeFile("home/.profile", "mine");
  writeFile("foreign/run.json", R"({"run": 1})");
  writeFile("torn/run.json", R"({"libvarrow_run": 1)");
  writeFile("list/run.json", R"([{"libvarrow_run": 1}])");
  writeFile("folder/run.json/run.json", R"({"libvarrow_run": 1})");
  writeFile("earlier/run.json", R"({"libvarrow_run": 1})");
  const auto before = contentOf(".");
  const std::string foreign = " has other files and no run.json of an earlier run";
  struct Case {
    const char* folder;
    bool overwrite;
    std::string reason;
  };
  const Case cases[] = {{"file", true, " is not a folder"},
                        {"file/run", true, " cannot be made: "},
                        {"home", true, foreign},
                        {".", true, foreign},
                        {"foreign", true, foreign},
                        {"torn", true, foreign},
                        {"list", true, foreign},
                        {"folder", true, foreign},
                        {"earlier", false, " has an earlier run; --overwrite replaces it"}};
  for (const auto& [folder, overwrite, reason] : cases) {
    const std::string error = errorOfRun(folder, overwrite);
    EXPECT_EQ(0u, error.find("the run folder " + std::string(folder) + reason)) << error;
  }
  EXPECT_EQ("a run needs a folder", errorOfRun("", true));
  EXPECT_EQ(before, contentOf("."));
}

TEST_F(RunFolders, AnEarlierRunIsReplacedWhole) {
  fs::create_directory("empty");
  EXPECT_EQ("", errorOfRun("empty", false));
  EXPECT_EQ("", errorOfRun("new/run", false));
  const auto first = contentOf("new/run");
  writeFile("new/run/dump/9_Stale/in_info.json", "{}");
  writeFile("new/run/orders.txt", "stale");
  writeFile("home/.profile", "mine");
  boost::system::error_code unsupported;
  fs::create_symlink(fs::absolute("home"), "new/run/dump/home", unsupported);
  writeFile("new/run/notes.txt", "mine");
  EXPECT_TRUE(contains(errorOfRun("new/run", true), "has notes.txt, which is not of its earlier"));
  fs::remove("new/run/notes.txt");
  writeFile("new/run/dump/inner/run.lock", "");
  EXPECT_TRUE(contains(errorOfRun("new/run", true), "contains another run: "));
  fs::remove_all("new/run/dump/inner");
  EXPECT_EQ("", errorOfRun("new/run/", true));
  auto second = contentOf("new/run");
  ASSERT_EQ(first.size(), second.size());
  EXPECT_EQ(first.at("new/run/orders.txt"), second["new/run/orders.txt"]);
  EXPECT_EQ("done", outcome("new/run"));
  EXPECT_EQ("mine", readFile("home/.profile"));
}

TEST_F(RunFolders, ARunningRunIsNotReplaced) {
  struct Second : libvarrow::RunObserver {
    void stepBegins(libvarrow::Module&, libvarrow::ModuleData&) override {
      if (errors.empty()) errors = {test->errorOfRun("run", true), test->errorOfRun("run", false)};
    }
    RunFolders* test = nullptr;
    std::vector<std::string> errors;
  } second;
  second.test = this;
  EXPECT_EQ("", errorOfRun("run", false, &second));
  ASSERT_EQ(2u, second.errors.size());
  EXPECT_EQ("the run folder run is in use by another run", second.errors[0]);
  EXPECT_NE("", second.errors[1]);
  EXPECT_EQ("done", outcome("run"));
}

TEST_F(RunFolders, NamesMayBeLongAndOfAnyAlphabet) {
  const std::string name = fromUtf8("计划聙é");  // code page 1252 has the last letter only
  for (const std::string& folder : {std::string(200, 'x'), "with blanks/" + name, "%s%n" + name}) {
    const std::vector<std::string> arguments = {
        "run", "p.json", "--out", folder, "--set", "Act.text=" + name + ".txt", "--overwrite"};
    for (int i = 0; i < 2; ++i) {
      const ChildResult run = orders(arguments);
      EXPECT_EQ(0, run.exitCode) << run.errors;
      EXPECT_TRUE(contains(run.output, "/" + folder + "/" + name + ".txt\n")) << run.output;
    }
    const Json::Value record = libvarrow::File2Json(folder + "/run.json");
    EXPECT_EQ(toUtf8(folder), record["command_line"][3].asString());
    EXPECT_EQ(toUtf8(arguments[5]), record["set"][0].asString());
    EXPECT_TRUE(contains(record["files"][0]["path"].asString(), toUtf8(folder + "/" + name)));
  }
}

TEST_F(RunFolders, WithoutANameARunGetsAFolderOfItsOwn) {
  std::string longName = "x";  // cut within limits, between two characters
  while (longName.size() < 120) longName += fromUtf8("计é");
  const std::string file = longName + ".json";
  fs::copy_file("p.json", file);
  for (int i = 0; i < 3; ++i) {
    const ChildResult run = orders({"run", file});
    EXPECT_EQ(0, run.exitCode) << run.errors;
    const bool isLink = fs::is_symlink("runs/latest");
    const std::string latest =
        isLink ? fs::read_symlink("runs/latest").string() + "\n" : readFile("runs/latest");
    EXPECT_TRUE(contains(run.output, "/runs/" + latest)) << run.output << latest;
  }
  std::set<std::string> names;
  for (const fs::directory_entry& entry : fs::directory_iterator("runs")) {
    if (fs::is_symlink(entry.symlink_status()) || !fs::is_directory(entry.path())) continue;
    names.insert(entry.path().filename().string());
    EXPECT_EQ("done", outcome(entry.path()));
    const std::string name = entry.path().filename().string().substr(18);
    const std::string stem = name.substr(0, name.find('_'));
    EXPECT_TRUE(longName.find(stem) == 0 && toUtf8(stem).size() > 90) << stem;
    EXPECT_EQ(stem, fromUtf8(toUtf8(stem)));
  }
  EXPECT_EQ(3u, names.size());
  writePipeline(act("throw", "no machine"));
  EXPECT_TRUE(contains(orders({"run", "p.json"}).errors,
                       "run folder  " + fs::canonical("runs").generic_string()));
}

}  // namespace
}  // namespace host_test
