#include "OutputFile.h"

#include <libvarrow/stream/AutoCreateDirFileStream.h>

#include <stdexcept>

namespace jobshop {

void writeText(const std::string& path, const std::string& text) {
  libvarrow::AutoCreateDirFileStream file(path);
  file << text << std::flush;
  if (!file) throw std::runtime_error("cannot write " + path);
}

void writeOutput(JobShopData& shop, const char* kind, const std::string& path,
                 const std::string& text) {
  writeText(path, text);
  shop.addWrittenFile(kind, path);
}

}  // namespace jobshop
