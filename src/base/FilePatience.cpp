#include "base/FilePatience.h"

#include <chrono>
#include <thread>

namespace libvarrow::base {

namespace {

constexpr int kMostPauses = 12;  // 1, 2, 4, ... 2048 ms

}  // namespace

bool FilePatience::isWorthATry(const boost::system::error_code& error) {
  if (pauses_ == kMostPauses || !mayBeOpen(error)) return false;
  std::this_thread::sleep_for(std::chrono::milliseconds(1 << pauses_++));
  return true;
}

}  // namespace libvarrow::base
