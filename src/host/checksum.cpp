#include "host/checksum.h"

#include <Poco/DigestEngine.h>
#include <Poco/SHA2Engine.h>

#include <array>
#include <boost/filesystem/operations.hpp>
#include <fstream>

namespace libvarrow::host {

namespace fs = boost::filesystem;

std::string checksum(const fs::path& path) {
  boost::system::error_code ignored;
  if (!fs::is_regular_file(path, ignored)) return std::string();
  std::ifstream file(path.string(), std::ios::binary);
  Poco::SHA2Engine engine(Poco::SHA2Engine::SHA_256);
  std::array<char, 65536> block{};
  while (file.read(block.data(), block.size()) || file.gcount() > 0) {
    engine.update(block.data(), static_cast<std::size_t>(file.gcount()));
  }
  return file.eof() ? Poco::DigestEngine::digestToHex(engine.digest()) : std::string();
}

}  // namespace libvarrow::host
