#include "OutputFile.h"

#include <libvarrow/module/run_files.h>
#include <libvarrow/stream/AutoCreateDirFileStream.h>
#include <libvarrow/utility/UTFConverter.h>

#include <boost/filesystem/path.hpp>
#include <stdexcept>

namespace jobshop {

void writeText(const std::string& path, const std::string& text) {
  libvarrow::AutoCreateDirFileStream file(path);
  file << text << std::flush;
  if (!file) {
    throw std::runtime_error("cannot write " + boost::filesystem::path(path).generic_string());
  }
}

void writeOutput(const JobShopData& shop, const char* kind, const std::string& path,
                 const std::string& text) {
  const auto file = libvarrow::outputPath(shop, libvarrow::utility::pathFromUtf8(path));
  writeText(file.string(), text);
  libvarrow::addRunFile(shop, kind, file);
}

}  // namespace jobshop
