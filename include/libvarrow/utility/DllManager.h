// Loading of plug-in libraries.
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

/// Loader of plug-ins, which register their classes. A plug-in is a shared library that exports a
/// function under the alias "initModule". The manager calls it once, right after loading:
///
///     #include <boost/dll/alias.hpp>
///     static void registerClasses() {
///       libvarrow::RegistersManager::createRegister("modules")->regClass<Dispatch>("Dispatch");
///     }
///     BOOST_DLL_ALIAS(registerClasses, initModule)
///     LIBVARROW_PLUG_IN_BUILD();
///
/// Plug-in and host must link the same varrow library and be built alike. The last line, of
/// libvarrow/utility/PlugInBuild.h, states the version and the ABI that the plug-in was built
/// against. The manager refuses a plug-in of another major version or another ABI before it calls
/// initModule. The line is optional: without it the manager does not check the build.
///
/// A plug-in's code stays loaded until the manager is destroyed, so the manager must outlive
/// everything that comes from its plug-ins. Destroy objects first, then registers that the host
/// made itself, then the manager, which removes the plug-ins' classes from the named registers. It
/// does not unload a library while something of the plug-in is alive (a created object, or a class
/// in another register), nor while an exception is in flight, which may come from the plug-in. A
/// WARN line then names the library and the reason. The manager does not know of objects that are
/// not created by class name (threads, callbacks, statistics, a caught error): construct the
/// manager before the host's data and outside of the try block.
///
/// Everything registered during initModule, or by static objects of the library, belongs to the
/// plug-in. A library that is already loaded, under another name or by another manager, is shared,
/// and its initModule is not called again; it is unloaded with the last manager that has it.
///
/// Not thread-safe: load at start-up from one thread.
class LIBVARROW_API DllManager {
 public:
  /// Returns the library loaded under `name`, or null.
  const boost::dll::shared_library* findDll(const std::string& name) const;

  /// Returns the library loaded under `name`. Loads it from the directory `dir` if needed: the file
  /// NAME.so, or else libNAME.so (NAME.dll on Windows). Logs the loading at INFO.
  ///
  /// Throws std::runtime_error "shared library:PATH err:MESSAGE!" when the file cannot be loaded,
  /// it was built against another major version or another ABI (the message has both versions and
  /// ABIs), or "initModule" is not a BOOST_DLL_ALIAS of a function. Throws
  /// boost::system::system_error "boost::dll::shared_library::get() failed ..." when the file does
  /// not export "initModule" itself (that of a library that it links does not count). Exceptions of
  /// initModule and of the library's static objects pass unchanged. Logs each error at ERROR with
  /// the file. After an error nothing is kept under the name and the library is unloaded: call
  /// again when the file is corrected. A plug-in that threw itself stays loaded for good, as it may
  /// define the type of the exception. So does a library that the system does not unload, such as
  /// one with GCC's unique symbols (-fno-gnu-unique avoids them); a WARN line says so.
  const boost::dll::shared_library* findOrCreateDll(const std::string& name,
                                                    const std::string& dir);

  /// Loads every library in `dir`, without subdirectories: each file whose extension is exactly
  /// ".so" (".dll" on Windows), under its name without the extension. Searches the directory of the
  /// running program for a relative `dir` that does not exist. Does nothing when it does not exist
  /// there either or is not a directory. Throws as findOrCreateDll does, and
  /// boost::filesystem::filesystem_error when the directory cannot be read; libraries loaded before
  /// the error stay loaded.
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
