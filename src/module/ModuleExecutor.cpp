#include "libvarrow/module/ModuleExecutor.h"

#include <boost/filesystem/operations.hpp>
#include <boost/make_shared.hpp>
#include <stdexcept>

#include "libvarrow/backtrace/Check.h"
#include "libvarrow/module/ChainedModule.h"

namespace libvarrow {

namespace {

boost::shared_ptr<Module> readMainModule(cppbind::ClassRegister* moduleRegister,
                                         const std::string& confPath, bool ignoreUnknownKeys) {
  LIBVARROW_CHECK(nullptr != moduleRegister);
  boost::system::error_code unreadable;
  if (!boost::filesystem::exists(confPath, unreadable)) {
    throw std::runtime_error("conf " + confPath + " file not found!");
  }
  cppbind::JsonDecodeBinder binder(moduleRegister);
  binder.setAcceptUnknownKeys(ignoreUnknownKeys);
  ChainedModule::Data4Bind record;
  binder.decode(cppbind::readJsonFile(confPath), record);
  return boost::make_shared<ChainedModule>(record);
}

}  // namespace

ModuleExecutor::ModuleExecutor(cppbind::ClassRegister* moduleRegister, const std::string& confPath,
                               bool ignoreUnknownKeys)
    : mainModule_(readMainModule(moduleRegister, confPath, ignoreUnknownKeys)) {}

void ModuleExecutor::process(ModuleData* data) const {
  mainModule_->process(data);
}

}  // namespace libvarrow
