// Who keeps the code of a class loaded.
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

/// A share in whatever keeps some code loaded, such as a plug-in library. Factories take one when
/// they are made and give it to every object that they create, so whoever owns the code can tell
/// whether anything of it is still alive: the share is not the only one. Null: code that stays.
using CodeOwner = boost::shared_ptr<const LoadedCode>;

/// The owner of the code that the calling thread registers now.
CPPBIND_API const CodeOwner& currentCodeOwner();

/// Makes `owner` the current one of the calling thread for as long as it lives.
class CPPBIND_API CodeOwnerScope : private boost::noncopyable {
 public:
  /// The destructor, on the same thread, puts the previous owner back.
  explicit CodeOwnerScope(CodeOwner owner);
  ~CodeOwnerScope();

 private:
  CodeOwner previous_;
};

}  // namespace cppbind
