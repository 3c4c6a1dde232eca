// Code owners: keep the code of registered classes loaded.
#pragma once

#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>
#include <string>

#include "cppbind/Export.h"

namespace cppbind {

/// Code that may be unloaded, such as a plug-in library.
struct LoadedCode {
  std::string name;  ///< for messages, such as the library's path
};

/// Shared ownership of loaded code, such as a plug-in library; null: code that is never unloaded. A
/// factory takes a share when it is created and gives it to every object that it creates. The code
/// is in use as long as other shares than the owner's exist.
using CodeOwner = boost::shared_ptr<const LoadedCode>;

/// Returns the owner of the code that the calling thread is registering.
CPPBIND_API const CodeOwner& currentCodeOwner();

/// RAII guard: `owner` is the current code owner of the calling thread.
class CPPBIND_API CodeOwnerScope : private boost::noncopyable {
 public:
  /// Sets the owner. The destructor, on the same thread, restores the previous one.
  explicit CodeOwnerScope(CodeOwner owner);
  ~CodeOwnerScope();

 private:
  CodeOwner owner_;
  const CodeOwner* previous_;
};

}  // namespace cppbind
