// UTF-8 text files: the helpers against a plain read and a plain write of the same bytes.
#include <benchmark/benchmark.h>

#include <boost/filesystem/operations.hpp>
#include <cstddef>
#include <fstream>
#include <iterator>
#include <string>

#include "libvarrow/json/json.h"
#include "libvarrow/stream/AutoCreateDirFileStream.h"

namespace bench {

namespace {

constexpr std::size_t kBytes = 4'000'000;

std::string repeated(const std::string& piece) {
  std::string text;
  while (text.size() < kBytes) text += piece;
  return text;
}

class TextFile {
 public:
  explicit TextFile(const std::string& piece) : text(repeated(piece)) {
    libvarrow::utility::writeFileForUTF8(path, text);
  }
  ~TextFile() { boost::filesystem::remove(path); }
  TextFile(const TextFile&) = delete;
  TextFile& operator=(const TextFile&) = delete;

  const std::string text;
  const std::string path =
      (boost::filesystem::temp_directory_path() / boost::filesystem::unique_path()).string();
};

// The usual short way.
std::string streamRead(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

// The fastest way with the standard library.
std::string blockRead(const std::string& path) {
  std::ifstream file(path, std::ios_base::binary | std::ios_base::ate);
  std::string text(static_cast<std::size_t>(file.tellg()), '\0');
  file.seekg(0);
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  return text;
}

std::string helperRead(const std::string& path) {
  return libvarrow::utility::readUTF8File(path);
}

void plainWrite(const std::string& path, const std::string& text) {
  std::ofstream(path) << text;
}

void helperWrite(const std::string& path, const std::string& text) {
  libvarrow::utility::writeFileForUTF8(path, text);
}

void readFile(benchmark::State& state, std::string (*read)(const std::string&), const char* piece) {
  const TextFile file(piece);
  if (read(file.path) != file.text) state.SkipWithError("another text");
  for (auto _ : state) benchmark::DoNotOptimize(read(file.path));
}

void writeFile(benchmark::State& state, void (*write)(const std::string&, const std::string&),
               const char* piece) {
  const TextFile file(piece);
  for (auto _ : state) write(file.path, file.text);
  if (blockRead(file.path) != file.text) state.SkipWithError("another text");
}

// A file of 200 characters in memory, where the system calls cost least.
void writeSmallFile(benchmark::State& state,
                    void (*write)(const std::string&, const std::string&)) {
  const boost::filesystem::path memory("/dev/shm");
  const boost::filesystem::path folder =
      boost::filesystem::is_directory(memory) ? memory : boost::filesystem::temp_directory_path();
  const std::string path = (folder / boost::filesystem::unique_path()).string();
  const std::string text(200, 'x');
  for (auto _ : state) write(path, text);
  if (blockRead(path) != text) state.SkipWithError("another text");
  boost::filesystem::remove(path);
}

void streamWrite(const std::string& path, const std::string& text) {
  libvarrow::AutoCreateDirFileStream(path) << text;
}

constexpr const char* kAscii = "machine 17, order 4711: 2024-03-05 08:00:00 to 09:30:00\n";
constexpr const char* kChinese = "机器十七，订单四七一一：三月五日八点至九点半\n";

BENCHMARK_CAPTURE(writeSmallFile, helper, helperWrite)->Name("small_file/helper");
BENCHMARK_CAPTURE(writeSmallFile, stream, streamWrite)->Name("small_file/creates_folder");
BENCHMARK_CAPTURE(writeSmallFile, plain, plainWrite)->Name("small_file/ofstream");
BENCHMARK_CAPTURE(readFile, helper_ascii, helperRead, kAscii)->Name("utf8_read/helper/ascii");
BENCHMARK_CAPTURE(readFile, stream_ascii, streamRead, kAscii)->Name("utf8_read/stream/ascii");
BENCHMARK_CAPTURE(readFile, block_ascii, blockRead, kAscii)->Name("utf8_read/block/ascii");
BENCHMARK_CAPTURE(readFile, helper_chinese, helperRead, kChinese)->Name("utf8_read/helper/chinese");
BENCHMARK_CAPTURE(readFile, stream_chinese, streamRead, kChinese)->Name("utf8_read/stream/chinese");
BENCHMARK_CAPTURE(readFile, block_chinese, blockRead, kChinese)->Name("utf8_read/block/chinese");
BENCHMARK_CAPTURE(writeFile, helper_ascii, helperWrite, kAscii)->Name("utf8_write/helper/ascii");
BENCHMARK_CAPTURE(writeFile, plain_ascii, plainWrite, kAscii)->Name("utf8_write/plain/ascii");
BENCHMARK_CAPTURE(writeFile, helper_chinese, helperWrite, kChinese)
    ->Name("utf8_write/helper/chinese");
BENCHMARK_CAPTURE(writeFile, plain_chinese, plainWrite, kChinese)->Name("utf8_write/plain/chinese");

}  // namespace

}  // namespace bench
