// The names of the host's own files in a run folder.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>

namespace libvarrow::host {

constexpr const char* kRecordFile = "run.json";
constexpr const char* kUnfinishedRecord = "run.json.writing";  ///< while it is written
constexpr const char* kLockFile = "run.lock";
constexpr const char* kPipelineFile = "pipeline.json";
constexpr const char* kStepsFile = "steps.jsonl";
constexpr const char* kStatisticsFile = "statistics.json";
constexpr const char* kTraceFile = "trace.json";
constexpr const char* kPageFile = "report.html";

/// Returns true for the name of a file that the host itself writes into a run folder.
inline bool isFileOfHost(std::string_view name) {
  constexpr std::array<std::string_view, 7> kNames = {
      kRecordFile, kLockFile, kPipelineFile, kStepsFile, kStatisticsFile, kTraceFile, kPageFile};
  return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
}

}  // namespace libvarrow::host
