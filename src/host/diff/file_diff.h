// Comparison of two files.
#pragma once

#include <boost/filesystem/path.hpp>
#include <optional>

#include "host/diff/DiffReport.h"
#include "host/diff/OwnFolders.h"

namespace libvarrow::host {

/// Returns the first difference of two regular files; its place is ":12", a line of a text, or
/// ", byte 345" of a binary file. Lines of texts that differ only in the folders of the runs or in
/// their ends, LF or CR LF, are equal. Needs memory for a few blocks only. Throws
/// std::runtime_error when a file cannot be read.
std::optional<Difference> fileDifference(const boost::filesystem::path& left,
                                         const boost::filesystem::path& right,
                                         const FoldersOfRuns& folders);

}  // namespace libvarrow::host
