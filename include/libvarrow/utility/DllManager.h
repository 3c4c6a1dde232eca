// Plug-in libraries.
#pragma once

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "libvarrow/Export.h"

namespace boost {
namespace dll {
class shared_library;
}
}  // namespace boost

namespace libvarrow {

/// Loads plug-ins and has each register its classes. A plug-in is a shared library that exports a
/// function under the alias "initModule", which is called once, right after loading:
///
///     #include <boost/dll/alias.hpp>
///     static void registerClasses() {
///       libvarrow::RegistersManager::createRegister("modules")->regClass<Dispatch>("Dispatch");
///     }
///     BOOST_DLL_ALIAS(registerClasses, initModule)
///
/// Plug-in and host link the same varrow library and are built alike.
///
/// A plug-in's code stays loaded until the manager is destroyed, so the manager is to outlive all
/// that comes from its plug-ins: objects first, then registries that the host made itself, then the
/// manager. It takes the plug-ins' classes out of the named registries on its own. Should anything
/// of a plug-in be alive then, a created object or a class in another registry, the library is not
/// unloaded; nor is it when the manager goes while an exception is in flight, which may be of the
/// plug-in's making. A WARN line names the library and says why. What is not created by class name
/// (threads, callbacks, statistics, an error that was caught) the manager cannot see: make it
/// before the host's data and outside of the try block.
///
/// Everything that is registered during initModule, or by the library's static objects, belongs to
/// the plug-in. A library that is loaded already, under another name or by another manager, is
/// shared and not started again; it goes with the last manager that has it. Not locked: load at
/// start-up from one thread.
class LIBVARROW_API DllManager {
 public:
  /// The library loaded under `name`, or null.
  const boost::dll::shared_library* findDll(const std::string& name) const;

  /// The same, and loads it from the directory `dir` if needed: the file NAME.so there, or else
  /// libNAME.so (NAME.dll on Windows). Loading is logged at INFO.
  ///
  /// A file that cannot be loaded, or whose "initModule" is no alias of a function, throws
  /// std::runtime_error "shared library:PATH err:MESSAGE!", one without an "initModule" of its own
  /// (that of a library that it links does not count) boost::system::system_error
  /// "boost::dll::shared_library::get() failed ...", and what initModule or a static object of the
  /// library throws passes as it is. Each is logged at ERROR with the file. Nothing is kept under
  /// the name then, and the library is unloaded: call again once the file is corrected. Only a
  /// plug-in that threw itself stays loaded for good, as the error may be of a type of its own.
  const boost::dll::shared_library* findOrCreateDll(const std::string& name,
                                                    const std::string& dir);

  /// Loads every library in `dir`, not in directories below: each file whose extension is exactly
  /// ".so" (".dll" on Windows), under its name without that. A relative `dir` that does not exist
  /// is looked for beside the running program; one that is not there either, or is no directory,
  /// loads nothing. Errors are those of findOrCreateDll and, for a directory that cannot be read,
  /// boost::filesystem::filesystem_error; libraries loaded before stay.
  void autoLoad(const std::string& dir);

 private:
  class Plugin;

  static boost::shared_ptr<Plugin> shared(const boost::shared_ptr<Plugin>& opened);
  static std::string nativeName(const std::string& name);
  const boost::dll::shared_library* load(const std::string& name,
                                         const boost::filesystem::path& file);

  std::map<std::string, boost::shared_ptr<Plugin>> plugins_;
};

}  // namespace libvarrow
