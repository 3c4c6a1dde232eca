#include "libvarrow/module/CPUProfiler.h"

namespace libvarrow {

boost::mutex CPUProfiler::mutex;  // NOLINT(cert-err58-cpp): constructed when the library is loaded
CPUProfiler* CPUProfiler::running_profiler = nullptr;

CPUProfiler::CPUProfiler(std::string) {}
CPUProfiler::CPUProfiler(const CPUProfiler&) = default;
CPUProfiler& CPUProfiler::operator=(const CPUProfiler&) = default;
CPUProfiler::~CPUProfiler() = default;

}  // namespace libvarrow
