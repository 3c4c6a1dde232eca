// The result of the commands that compare runs.
#pragma once

#include "host/RunReader.h"
#include "libvarrow/host/Command.h"

namespace libvarrow::host {

///@{
/// The exit statuses, those of the program diff.
constexpr int kSameRuns = 0;
constexpr int kOtherRuns = 1;
constexpr int kNotCompared = 2;
///@}

/// Prints the first difference of two runs, or all, and returns the exit status. Throws
/// std::runtime_error when a run cannot be read; after printing, when one is not complete.
int tellDifferences(const RunReader& left, const RunReader& right, bool all,
                    const CommandContext& context);

}  // namespace libvarrow::host
