// Runs that continue an earlier one with one of its steps.
#include <algorithm>
#include <boost/filesystem/operations.hpp>
#include <map>
#include <set>

#include "support/support.h"

namespace {

namespace fs = boost::filesystem;
using namespace test_support;

ChildResult run(const std::string& folder, const std::string& pipeline,
                const std::vector<std::string>& more) {
  std::vector<std::string> line{JOBSHOP_PROGRAM, "run", pipeline, "--out", folder, "--overwrite"};
  line.insert(line.end(), more.begin(), more.end());
  return runProgram(line);
}

// Returns the contents of all dumps, by their paths below `dumps`.
std::map<std::string, std::string> contentOf(const fs::path& dumps) {
  std::map<std::string, std::string> content;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(dumps)) {
    if (!fs::is_regular_file(entry.path())) continue;
    content[entry.path().lexically_relative(dumps).generic_string()] = readFile(entry.path());
  }
  return content;
}

std::set<std::string> stepsOf(const fs::path& dumps) {
  std::set<std::string> steps;
  for (const auto& [file, text] : contentOf(dumps)) {
    const std::size_t end = file.find("/in_info.json");
    if (end != std::string::npos) steps.insert(file.substr(0, end));
  }
  return steps;
}

// The chains around the first step begin with its data in place of their own.
bool isInputOfChainAround(const std::string& file, const std::string& step) {
  const std::size_t input = std::min(
      {file.find("in_info.json"), file.find("in_detail.txt"), file.find("before_process/")});
  return input != std::string::npos && step.compare(0, input, file, 0, input) == 0;
}

class Resume : public InTemporaryDirectory {};

TEST_F(Resume, FromEveryStepTheLaterDumpsAreThoseOfTheWholeRun) {
  const std::string folder = JOBSHOP_FOLDER "/";
  writeFile("improve.json",
            R"({"modules": [{"ReadInstance": {"file": "data/la01.txt"}},
                {"ChainedModule": {"modules": [
                  {"ChainedModuleV2": {"modules": [{"Dispatch": {"rule": "LPT", "tries": 3}}]}},
                  {"Improve": {"iterations": 300}}]}},
                {"Improve": {"iterations": 300, "seed": 2}}, {"CheckSchedule": {}}]})");
  writeFile("failing.json",
            R"({"modules": [{"ReadInstance": {"file": "data/ft06.txt"}},
                {"SetCalendars": {"start": "2024-03-01 06:00:00"}}, {"Dispatch": {"rule": "SPT"}},
                {"CheckRules": {"file": "rules_strict.json", "stop": false}},
                {"ChainedModule": {"modules": [{"CheckSchedule": {}}, {"Improve": {}}]}}]})");
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {folder + "pipeline.json", {"--set", "Dispatch.tries=3"}},
      {folder + "pipeline_shifts.json", {"--set", "Dispatch.tries=3"}},
      {folder + "pipeline_late.json", {}},
      {"improve.json", {"--inputs", folder}},
      {"failing.json", {"--inputs", folder}}};
  for (const auto& [pipeline, options] : cases) {
    const ChildResult whole = run("whole", pipeline, options);
    const auto expected = contentOf("whole/dump");
    const std::set<std::string> steps = stepsOf("whole/dump");
    EXPECT_LE(6u, steps.size()) << whole.errors;
    for (const std::string& step : steps) {
      std::vector<std::string> from = options;
      from.insert(from.end(), {"--from", "whole/dump/" + step});
      const ChildResult part = run("part", pipeline, from);
      EXPECT_EQ(whole.exitCode, part.exitCode) << step << part.errors;
      EXPECT_EQ(whole.errors, part.errors) << step;
      std::size_t compared = 0;
      for (const auto& [file, text] : contentOf("part/dump")) {
        if (isInputOfChainAround(file, step)) continue;
        ASSERT_EQ(1u, expected.count(file)) << file;
        EXPECT_EQ(expected.at(file), text) << step << ": " << file;
        ++compared;
      }
      EXPECT_LE(4u, compared) << step;
    }
  }
}

}  // namespace
