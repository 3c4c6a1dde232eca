// Comparison of files and folders.
#pragma once

#include <boost/filesystem/path.hpp>
#include <set>
#include <string>

#include "host/diff/DiffReport.h"
#include "host/diff/OwnFolders.h"

namespace libvarrow::host {

/// Two runs, or two folders of them, and the beginning of the places in the report.
struct ComparedFolders {
  boost::filesystem::path left;
  boost::filesystem::path right;
  std::string title{};
  std::set<std::string> skipped{};  ///< places that are not compared
};

/// Compares the entry `name`, a text of the program, of two folders: a file, a folder with all its
/// files, or a symbolic link, which is not followed. An entry that neither of them has is equal.
/// Adds differences to `report`, until that is enough. Throws std::runtime_error when a file cannot
/// be read.
void diffEntry(const ComparedFolders& folders, const std::string& name, const FoldersOfRuns& texts,
               DiffReport& report);

/// Returns the names of the entries of both folders, which may be missing, as texts of the program.
std::set<std::string> namesInBoth(const ComparedFolders& folders);

}  // namespace libvarrow::host
