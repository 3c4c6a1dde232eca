// The directory in which the process started.
#pragma once

#include <atomic>
#include <boost/filesystem/path.hpp>
#include <boost/smart_ptr/scoped_ptr.hpp>
#include <boost/thread/mutex.hpp>
#include <boost/thread/shared_mutex.hpp>

#include "libvarrow/Export.h"

namespace libvarrow {

/// The process-wide environment. The first call of instance() fixes the paths, so call it before
/// anything changes the current directory, as modules may do for their dumps. Thread-safe.
class LIBVARROW_API RunTimeEnv {
 public:
  /// Returns the environment, which the first call creates and which lives until the process ends.
  /// Throws boost::filesystem::filesystem_error when the current directory no longer exists.
  static RunTimeEnv& instance();

  virtual ~RunTimeEnv();
  RunTimeEnv(const RunTimeEnv&) = delete;
  RunTimeEnv& operator=(const RunTimeEnv&) = delete;

  /// Returns the directory that was current when the instance was created.
  const boost::filesystem::path& runPath() const;
  /// Returns the directory of the configuration files: the run path.
  const boost::filesystem::path& confPath() const;

 protected:
  RunTimeEnv();

 private:
  boost::filesystem::path runPath_;
  boost::filesystem::path confPath_;
  mutable boost::shared_mutex mutex_;

  static boost::scoped_ptr<RunTimeEnv> _instance;
  static boost::mutex _instanceMutex;
  // Can be read without the lock, while another thread sets the pointer above.
  static std::atomic<RunTimeEnv*> published_;
};

}  // namespace libvarrow
