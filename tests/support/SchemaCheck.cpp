#include "support/SchemaCheck.h"

#include <json/writer.h>

#include <boost/filesystem/operations.hpp>
#include <fstream>

#include "support/support.h"

namespace test_support {

std::vector<bool> validBySchema(const std::string& schemaText,
                                const std::vector<Json::Value>& documents, bool asDouble) {
  const TemporaryDirectory directory;
  Json::StreamWriterBuilder oneLine;
  oneLine["indentation"] = "";
  std::string lines;
  for (const Json::Value& document : documents)
    lines += Json::writeString(oneLine, document) + "\n";
  writeFile("schema.json", schemaText);
  writeFile("documents", lines);
  const ChildResult check = runProgram(
      {PYTHON, CHECK_SCHEMA, "schema.json", "documents", asDouble ? "double" : "int", "verdicts"});
  EXPECT_EQ("", check.errors);
  // Wine does not wait for the end of a program that is not for Windows.
  EXPECT_TRUE(eventually([] { return boost::filesystem::exists("verdicts"); }));
  std::vector<bool> verdicts;
  std::ifstream output("verdicts");
  for (std::string line; std::getline(output, line);) verdicts.push_back(line == "valid");
  EXPECT_EQ(documents.size(), verdicts.size());
  verdicts.resize(documents.size());
  return verdicts;
}

}  // namespace test_support
