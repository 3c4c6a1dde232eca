#include "schedule/ScheduleReader.h"

#include <array>
#include <charconv>
#include <fstream>
#include <stdexcept>

namespace jobshop {

namespace {

using Numbers = std::array<Time, 5>;  // job, operation, machine, start, end

// The columns after these repeat them on the clock of the shop.
bool parse(const std::string& line, Numbers& numbers) {
  const char* at = line.data();
  const char* const end = at + line.size();
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0 && (at == end || *at++ != ',')) return false;
    const auto [stop, error] = std::from_chars(at, end, numbers[i]);
    if (error != std::errc()) return false;
    at = stop;
  }
  return at == end || *at == ',' || *at == '\r';
}

bool isOf(const Instance& instance, const Numbers& numbers) {
  const auto [job, operation, machine, start, end] = numbers;
  const auto isBelow = [](Time number, std::size_t limit) {
    return number >= 0 && static_cast<std::size_t>(number) < limit;
  };
  return isBelow(job, instance.jobs.size()) &&
         isBelow(operation, instance.jobs[static_cast<std::size_t>(job)].size()) &&
         isBelow(machine, instance.machineCount) && start >= 0 && start <= end;
}

}  // namespace

std::vector<ScheduledOperation> readScheduleCsv(const std::string& fileName,
                                                const Instance& instance) {
  std::ifstream file(fileName, std::ios::binary);
  std::vector<ScheduledOperation> operations;
  std::string line;
  std::size_t number = 1;
  std::getline(file, line);  // the names of the columns
  while (std::getline(file, line)) {
    ++number;
    Numbers numbers{};
    if (!parse(line, numbers) || !isOf(instance, numbers)) {
      throw std::runtime_error(fileName + ":" + std::to_string(number) +
                               ": expected an operation of the instance");
    }
    operations.push_back({static_cast<std::size_t>(numbers[0]),
                          static_cast<std::size_t>(numbers[1]),
                          static_cast<std::size_t>(numbers[2]), numbers[3], numbers[4]});
  }
  if (operations.size() != instance.operationCount()) {
    throw std::runtime_error(fileName + ": expected " + std::to_string(instance.operationCount()) +
                             " operations, found " + std::to_string(operations.size()));
  }
  return operations;
}

}  // namespace jobshop
