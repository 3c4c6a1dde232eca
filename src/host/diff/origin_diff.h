// Comparison of the files that two runs were made of.
#pragma once

#include <json/value.h>

#include "host/diff/DiffReport.h"

namespace libvarrow::host {

/// Compares input files and plug-ins of two records of runs. Another content of an input file,
/// another version of a plug-in, a missing and an additional one are differences. Another build of
/// the program, of a library or of a plug-in is a note.
void diffOrigins(const Json::Value& left, const Json::Value& right, DiffReport& report);

}  // namespace libvarrow::host
