#include "libvarrow/module/ModuleLoader.h"

#include <boost/make_shared.hpp>
#include <memory>
#include <utility>

#include "libvarrow/backtrace/Check.h"
#include "libvarrow/module/CommonModuleStatDumper.h"
#include "module/main_module_record.h"

namespace libvarrow {

namespace {

// Returns the value of `key`, or null. `object` may be null itself.
const Json::Value& member(const Json::Value& object, const char* key) {
  if (!object.isObject() && !object.isNull()) {
    throw cppbind::ParseErrorException("should be a object");
  }
  return object[key];
}

Json::Value::Members memberNames(const Json::Value& object) {
  return object.isObject() ? object.getMemberNames() : Json::Value::Members();
}

}  // namespace

ModuleLoader::ModuleLoader() {
  classRegister_.regClass<ChainedModule>("ChainedModule");
  classRegister_.regClass<CommonModuleStatDumper>("CommonModuleStatDumper");
}

void ModuleLoader::loadFile(const boost::filesystem::path& path) {
  loadJson(cppbind::readJsonFile(path));
}

void ModuleLoader::loadJson(const Json::Value& jv) {
  const Json::Value& modules = member(jv, "named_modules");
  if (!modules.isNull()) {
    cppbind::withKey("named_modules", [&] { named_modules = loadNamedModules(modules); });
  }
  const Json::Value& chain = member(jv, "chained_module");
  if (!chain.isNull()) mainModule_.reset(loadOneChainModule(chain));
}

void ModuleLoader::loadJsonV2(const Json::Value& jv, cppbind::ClassRegisterBase* reg) {
  cppbind::JsonDecodeBinder binder(reg);
  MainModuleRecord record;
  binder.decode(jv, record);
  mainModule_ = record.module;
}

ChainedModule* ModuleLoader::loadChainedModule(const Json::Value& jv) {
  cppbind::JsonDecodeBinder binder(&classRegister_);
  ChainedModule::Data4Bind record;
  binder.decode(jv, record);
  return new ChainedModule(record);
}

ModuleLoader::NamedModules ModuleLoader::loadNamedModules(const Json::Value& jv) {
  if (!jv.isObject()) throw cppbind::ParseErrorException("should be a object");
  NamedModules modules;
  for (const std::string& name : jv.getMemberNames()) {
    cppbind::withKey(name, [&] {
      boost::shared_ptr<Module> m(loadOneModule(jv[name]));
      LIBVARROW_CHECK(m);
      modules[name] = std::move(m);
    });
  }
  return modules;
}

Module* ModuleLoader::loadOneModule(const Json::Value& jv) {
  const Json::Value::Members module_type_names = memberNames(jv);
  LIBVARROW_CHECK(module_type_names.size() == 1);
  cppbind::JsonDecodeBinder binder(&classRegister_);
  const std::string& className = module_type_names.front();
  Module* m = nullptr;
  cppbind::withClass(className,
                     [&] { m = classRegister_.create<Module>(className, jv[className], &binder); });
  LIBVARROW_CHECK(m);
  return m;
}

ChainedModule* ModuleLoader::loadOneChainModule(const Json::Value& jv) {
  auto chain = std::make_unique<ChainedModule>();
  LIBVARROW_CHECK(jv.isArray());
  for (const Json::Value& jv_module : jv) {
    LIBVARROW_CHECK(jv_module.isString());
    const std::string module_name = jv_module.asString();
    LIBVARROW_CHECK(this->named_modules.find(module_name) != this->named_modules.end());
    chain->addModule(this->named_modules.at(module_name));
  }
  return chain.release();
}

}  // namespace libvarrow
