// Where the process started.
#pragma once

#include <atomic>
#include <boost/filesystem/path.hpp>
#include <boost/smart_ptr/scoped_ptr.hpp>
#include <boost/thread/mutex.hpp>
#include <boost/thread/shared_mutex.hpp>

#include "libvarrow/Export.h"

namespace libvarrow {

/// The process-wide environment. The first call of instance() fixes the paths, so make it before
/// anything changes the current directory, as modules may do for their dumps. Thread safe.
/// Throws boost::filesystem::filesystem_error when there is no current directory any more.
class LIBVARROW_API RunTimeEnv {
 public:
  /// The environment, made by the first call; there until the process ends.
  static RunTimeEnv& instance();

  virtual ~RunTimeEnv();
  RunTimeEnv(const RunTimeEnv&) = delete;
  RunTimeEnv& operator=(const RunTimeEnv&) = delete;

  /// The directory that was current when the instance was made.
  const boost::filesystem::path& runPath() const;
  /// Where configuration files are looked for: the run path.
  const boost::filesystem::path& confPath() const;

 protected:
  RunTimeEnv();

 private:
  boost::filesystem::path runPath_;
  boost::filesystem::path confPath_;
  mutable boost::shared_mutex mutex_;

  static boost::scoped_ptr<RunTimeEnv> _instance;
  static boost::mutex _instanceMutex;
  // What readers look at, without the lock: the pointer above may be being set.
  static std::atomic<RunTimeEnv*> published_;
};

}  // namespace libvarrow
