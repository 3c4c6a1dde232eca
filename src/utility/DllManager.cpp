#include "libvarrow/utility/DllManager.h"

#include <boost/dll/import.hpp>
#include <boost/dll/runtime_symbol_info.hpp>
#include <boost/dll/shared_library.hpp>
#include <boost/exception/diagnostic_information.hpp>
#include <boost/filesystem/operations.hpp>
#include <boost/function.hpp>
#include <boost/make_shared.hpp>
#include <exception>
#include <stdexcept>
#include <utility>
#include <vector>

#include "cppbind/CodeOwner.h"
#include "libvarrow/log/log.h"
#include "libvarrow/utility/RegistersManager.h"

namespace libvarrow {

namespace fs = boost::filesystem;

namespace {

constexpr const char* kEntry = "initModule";

std::string suffix() {
  return boost::dll::shared_library::suffix().string();
}

// The file that a plain name stands for: exactly that name, else the name as linkers decorate it.
fs::path fileOf(const std::string& name, const fs::path& dir) {
  const fs::path exact = dir / (name + suffix());
  const fs::path decorated = dir / ("lib" + name + suffix());
  boost::system::error_code ignored;
  return !fs::exists(exact, ignored) && fs::exists(decorated, ignored) ? decorated : exact;
}

std::runtime_error fault(const std::string& path, const std::string& message) {
  return std::runtime_error("shared library:" + path + " err:" + message + "!");
}

boost::dll::shared_library open(const fs::path& path) {
  try {
    // What the library lacks is to be found out now, not at the first call.
    return boost::dll::shared_library(path, boost::dll::load_mode::rtld_now);
  } catch (const boost::system::system_error& error) {
    throw fault(path.generic_string(), error.what());
  }
}

// Libraries that are never unloaded.
std::vector<boost::dll::shared_library>& keptLibraries() {
  static auto* const libraries = new std::vector<boost::dll::shared_library>;
  return *libraries;
}

}  // namespace

// A loaded library and the share that tells whether anything of it is alive.
class DllManager::Plugin {
 public:
  Plugin(std::string path, boost::dll::shared_library library)
      : path_(std::move(path)), library_(std::move(library)) {}
  Plugin(const Plugin&) = delete;
  Plugin& operator=(const Plugin&) = delete;

  ~Plugin() {
    RegistersManager::unregisterAllOf(owner_);
    if (owner_.use_count() == 1) return;
    LIBVARROW_LOG_WARN("shared library:%s stays loaded: %ld of its classes and objects are alive",
                       path_.c_str(), owner_.use_count() - 1);
    keepLoaded();
  }

  void start() {
    const auto entry = findEntry();
    const cppbind::CodeOwnerScope scope(owner_);
    try {
      entry();
    } catch (...) {
      logError(boost::current_exception_diagnostic_information());
      keepLoaded();  // the error's type may be the library's own
      throw;
    }
  }

  void keepLoaded() { keptLibraries().push_back(std::move(library_)); }

  const boost::dll::shared_library& library() const { return library_; }

 private:
  // The exported pointer's target; a function of that name would be taken for a pointer, too.
  boost::function<void()> findEntry() const {
    try {
      void* const target = library_.get<void*>(kEntry);
      boost::system::error_code isNowhere;
      boost::dll::symbol_location_ptr(target, isNowhere);
      if (isNowhere) throw fault(path_, "initModule is no alias of a function");
      return library_.get_alias<void()>(kEntry);
    } catch (const std::exception& error) {
      logError(error.what());
      throw;
    }
  }

  void logError(const std::string& message) const {
    LIBVARROW_LOG_ERROR("shared library:%s err:%s", path_.c_str(), message.c_str());
  }

  const std::string path_;
  boost::dll::shared_library library_;
  const cppbind::CodeOwner owner_ = boost::make_shared<char>();
};

DllManager::DllManager() {
  // Made first, so that it goes last, also when both live until the process ends.
  RegistersManager::instance();
}

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

const boost::dll::shared_library* DllManager::load(const std::string& name, const fs::path& file) {
  LIBVARROW_LOG_INFO("开始加载动态库:%s", name.c_str());
  const auto plugin = boost::make_shared<Plugin>(file.generic_string(), open(file));
  plugin->start();
  LIBVARROW_LOG_INFO("成功加载动态库:%s", name.c_str());
  return &plugins_.emplace(name, plugin).first->second->library();
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
    // Exactly: what is spelt otherwise is no plug-in's name.
    if (fs::is_directory(entry.status()) || file.extension() != suffix()) continue;
    const std::string name = file.stem().string();
    if (findDll(name) == nullptr) load(name, file);
  }
}

}  // namespace libvarrow
