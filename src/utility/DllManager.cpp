#include "libvarrow/utility/DllManager.h"

#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <boost/exception/diagnostic_information.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <boost/weak_ptr.hpp>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/NeverDestroyed.h"
#include "cppbind/CodeOwner.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/RegistersManager.h"
#include "libvarrow/utility/UTFConverter.h"
#include "utility/build_mismatch.h"
#include "utility/mapped_library.h"

namespace libvarrow {

namespace fs = boost::filesystem;

namespace {

constexpr const char* kEntry = "initModule";
constexpr const char* kBuild = "libvarrowPlugInBuild";

std::string suffix() {
  return boost::dll::shared_library::suffix().string();
}

// Returns the file for a plain name: exactly that name, else the name with the linkers' prefix.
fs::path fileOf(const std::string& name, const fs::path& dir) {
  const fs::path exact = dir / (name + suffix());
  const fs::path decorated = dir / ("lib" + name + suffix());
  boost::system::error_code ignored;
  return !fs::exists(exact, ignored) && fs::exists(decorated, ignored) ? decorated : exact;
}

std::runtime_error fault(const std::string& path, const std::string& message) {
  return std::runtime_error("shared library:" + path + " err:" + message + "!");
}

void logFault(const std::string& path, const std::string& message) {
  LIBVARROW_LOG_ERROR("shared library:%s err:%s", path.c_str(), message.c_str());
}

boost::dll::shared_library open(const fs::path& path) {
  try {
    // Reports unresolved symbols now, not at the first call.
    return boost::dll::shared_library(path, boost::dll::load_mode::rtld_now);
  } catch (const boost::system::system_error& error) {
    logFault(path.generic_string(), error.what());
    throw fault(path.generic_string(), error.what());
  } catch (...) {
    // A static object of the library threw; the loader then keeps the code loaded.
    logFault(path.generic_string(), boost::current_exception_diagnostic_information());
    throw;
  }
}

// Returns false for directories and for files that block readers, such as pipes. A dangling link
// counts as a library: the loader reports its error.
bool mayBeLibrary(const fs::path& file) {
  boost::system::error_code ignored;
  const fs::file_type type = fs::status(file, ignored).type();
  return type == fs::regular_file || type == fs::file_not_found || type == fs::status_error;
}

// Libraries that are never unloaded.
std::vector<boost::dll::shared_library>& neverUnloaded() {
  static base::NeverDestroyed<std::vector<boost::dll::shared_library>> libraries;
  return *libraries;
}

}  // namespace

// A loaded library and its owner, whose use count tells whether anything of it is alive.
class DllManager::Plugin {
 public:
  explicit Plugin(const fs::path& file)
      : path_(file.generic_string()), library_(openFor(owner_, file)) {}
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  ~Plugin() {
    RegistersManager::unregisterAllOf(owner_);
    const std::string reason = reasonNotToUnload();
    if (!reason.empty()) {
      warnOfStayingLoaded(reason);
      neverUnloaded().push_back(std::move(library_));
      return;
    }
    if (isStarted_ || isShared_) return;
    // The plug-in was refused: unload it, so that a corrected file can be loaded under the same
    // path.
    library_.unload();
    if (isMapped(path_)) {
      warnOfStayingLoaded(
          "the system does not unload it (another library uses it, or it was built without "
          "-fno-gnu-unique); a corrected file needs another name or a new process");
    }
  }

  // Another object has the same library, and decides when it is unloaded.
  void setShared() { isShared_ = true; }

  void start() {
    requireSameBuild();
    const Entry entry = findEntry();
    const cppbind::CodeOwnerScope scope(owner_);
    isStarted_ = true;
    try {
      entry();
    } catch (...) {
      hasThrown_ = true;
      logFault(path_, boost::current_exception_diagnostic_information());
      throw;
    }
  }

  const boost::dll::shared_library& library() const { return library_; }

 private:
  // Classes that static objects of the library register belong to it too.
  static boost::dll::shared_library openFor(const cppbind::CodeOwner& owner, const fs::path& file) {
    const cppbind::CodeOwnerScope scope(owner);
    try {
      return open(file);
    } catch (...) {
      RegistersManager::unregisterAllOf(owner);
      throw;
    }
  }

  // Returns an empty text when nothing needs the library's code. An exception may have a type of
  // the library, or have passed through its objects, only once it was started: earlier exceptions
  // all come from the loader.
  std::string reasonNotToUnload() const {
    const long others = owner_.use_count() - 1;
    if (others > 0) return std::to_string(others) + " of its classes and objects are alive";
    if (hasThrown_) {
      return "initModule threw an exception whose type the library may define; load the corrected "
             "file under another name or in a new process";
    }
    const bool isSuspect = isStarted_ && std::uncaught_exceptions() > 0;
    return isSuspect ? "an exception in flight may be of its types" : "";
  }

  void warnOfStayingLoaded(const std::string& reason) const {
    LIBVARROW_LOG_WARN("shared library:%s stays loaded: %s", path_.c_str(), reason.c_str());
  }

  [[noreturn]] void refuse(const std::string& reason) const {
    logFault(path_, reason);
    throw fault(path_, reason);
  }

  // Runs no code of the plug-in. One that does not state its build is trusted to match.
  void requireSameBuild() const {
    if (!library_.has(kBuild)) return;
    const char* const build = &library_.get<char>(kBuild);
    boost::system::error_code isNowhere;  // an absolute or thread-local symbol
    const fs::path holder = boost::dll::symbol_location_ptr(build, isNowhere);
    if (!isNowhere && holder != library_.location()) return;  // see holderOf
    const std::string mismatch = isNowhere ? kNotABuild : buildMismatch(build);
    if (!mismatch.empty()) refuse(mismatch);
  }

  // The loader also searches the libraries that this one links.
  static fs::path holderOf(const void* symbol) { return boost::dll::symbol_location_ptr(symbol); }

  using Entry = void (*)();

  Entry findEntry() const {
    // Copies bytes: a function named initModule is not a pointer and may lie at any address.
    void* target = nullptr;
    std::memcpy(&target, entrySymbol(), sizeof target);
    boost::system::error_code notFound;
    boost::dll::symbol_location_ptr(target, notFound);
    if (notFound) refuse("initModule is not a BOOST_DLL_ALIAS of a function");
    return reinterpret_cast<Entry>(target);
  }

  const char* entrySymbol() const {
    try {
      const char* const symbol = &library_.get<char>(kEntry);
      requireOwn(symbol);
      return symbol;
    } catch (const std::exception& error) {
      logFault(path_, error.what());
      throw;
    }
  }

  void requireOwn(const char* symbol) const {
    const fs::path holder = holderOf(symbol);
    if (holder == library_.location()) return;
    throw boost::system::system_error(
        boost::system::errc::make_error_code(boost::system::errc::executable_format_error),
        "boost::dll::shared_library::get() failed (" + path_ +
            " has no initModule of its own: the one found is that of " + holder.generic_string() +
            ")");
  }

  const std::string path_;
  const cppbind::CodeOwner owner_ =
      boost::make_shared<cppbind::LoadedCode>(cppbind::LoadedCode{path_});
  boost::dll::shared_library library_;
  bool isStarted_ = false;
  bool hasThrown_ = false;
  bool isShared_ = false;
};

std::string DllManager::nativeName(const std::string& name) {
  return name;
}

const boost::dll::shared_library* DllManager::findDll(const std::string& name) const {
  const auto found = plugins_.find(name);
  return found == plugins_.end() ? nullptr : &found->second->library();
}

const boost::dll::shared_library* DllManager::findOrCreateDll(const std::string& name,
                                                              const std::string& dir) {
  if (const auto* loaded = findDll(name)) return loaded;
  return load(name, fileOf(nativeName(name), dir));
}

// Returns the plug-in of a library that a manager holds already, under any name, else `opened`.
boost::shared_ptr<DllManager::Plugin> DllManager::shared(const boost::shared_ptr<Plugin>& opened) {
  static base::NeverDestroyed<std::map<void*, boost::weak_ptr<Plugin>>> alive;
  boost::weak_ptr<Plugin>& known = (*alive)[opened->library().native()];
  if (auto plugin = known.lock()) {
    opened->setShared();
    return plugin;
  }
  known = opened;
  return opened;
}

const boost::dll::shared_library* DllManager::load(const std::string& name, const fs::path& file) {
  LIBVARROW_LOG_INFO("%s%s", utility::fromUtf8("开始加载动态库:").c_str(), name.c_str());
  const auto opened = boost::make_shared<Plugin>(file);
  const auto plugin = shared(opened);
  // Adds the plug-in before it starts, because it may load libraries from its directory.
  plugins_.emplace(name, plugin);
  try {
    if (plugin == opened) plugin->start();
    LIBVARROW_LOG_INFO("%s%s", utility::fromUtf8("成功加载动态库:").c_str(), name.c_str());
  } catch (...) {
    plugins_.erase(name);
    throw;
  }
  return &plugin->library();
}

void DllManager::autoLoad(const std::string& dir) {
  fs::path path(dir);
  boost::system::error_code ignored;
  if (!path.is_absolute() && !fs::exists(path, ignored)) {
    path = boost::dll::program_location().parent_path() / dir;
  }
  if (!fs::is_directory(path, ignored)) return;
  for (const fs::directory_entry& entry : fs::directory_iterator(path)) {
    const fs::path& file = entry.path();
    // Compares exactly: a file with another spelling of the extension is not a plug-in.
    if (file.extension() != suffix() || !mayBeLibrary(file)) continue;
    const std::string name = file.stem().string();
    if (findDll(name) == nullptr) load(name, file);
  }
}

}  // namespace libvarrow
