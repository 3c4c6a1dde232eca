#include "support/SchemaCheck.h"

#include <json/writer.h>

#include <sstream>

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
      {"python3", CHECK_SCHEMA, "schema.json", "documents", asDouble ? "double" : "int"});
  EXPECT_EQ("", check.errors);
  std::vector<bool> verdicts;
  std::istringstream output(check.output);
  for (std::string line; std::getline(output, line);) verdicts.push_back(line == "valid");
  EXPECT_EQ(documents.size(), verdicts.size());
  verdicts.resize(documents.size());
  return verdicts;
}

}  // namespace test_support
