#include "libvarrow/env/RunTimeEnv.h"

#include <boost/filesystem/operations.hpp>
#include <boost/thread/lock_guard.hpp>
#include <boost/thread/shared_lock_guard.hpp>

#include "cppbind/Assert.h"

namespace libvarrow {

boost::scoped_ptr<RunTimeEnv> RunTimeEnv::_instance;
boost::mutex RunTimeEnv::_instanceMutex;  // NOLINT(cert-err58-cpp): nothing runs before it
std::atomic<RunTimeEnv*> RunTimeEnv::published_{nullptr};

RunTimeEnv& RunTimeEnv::instance() {
  if (RunTimeEnv* env = published_.load(std::memory_order_acquire)) return *env;
  const boost::lock_guard<boost::mutex> lock(_instanceMutex);
  if (_instance == nullptr) _instance.reset(new RunTimeEnv);
  CPPBIND_ASSERT(NULL != _instance.get());  // NOLINT(modernize-use-nullptr): the text is printed
  published_.store(_instance.get(), std::memory_order_release);
  return *_instance;
}

RunTimeEnv::RunTimeEnv() : runPath_(boost::filesystem::current_path()), confPath_(runPath_) {}

RunTimeEnv::~RunTimeEnv() = default;

const boost::filesystem::path& RunTimeEnv::runPath() const {
  const boost::shared_lock_guard<boost::shared_mutex> lock(mutex_);
  return runPath_;
}

const boost::filesystem::path& RunTimeEnv::confPath() const {
  const boost::shared_lock_guard<boost::shared_mutex> lock(mutex_);
  // Configuration files are in the directory in which the process was started.
  return runPath_;
}

}  // namespace libvarrow
