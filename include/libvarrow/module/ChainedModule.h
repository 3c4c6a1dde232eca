// A module that runs others in order.
#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// A module that runs its modules in order on one ModuleData. The module at index i gets the dump
/// path P + "i_NAME/", where P is the chain's own; an empty P is replaced by a new random UUID for
/// every module. In JSON: {"ChainedModule": {"modules": [{"ClassName": {...}}, ...]}}.
///
/// An exception of a module ends the chain immediately; the data keeps that module's dump path.
class LIBVARROW_API ChainedModule : public Module {
 public:
  /// The configuration of a chain in a pipeline file.
  struct LIBVARROW_API Data4Bind {
    /// The modules in running order.
    std::vector<boost::shared_ptr<Module>> modules;

    /// Binds the key "modules". Reading appends to the existing modules: all or none.
    void setBind(cppbind::Binder* binder, bool bindFields);
  };

  ChainedModule() = default;
  /// Creates a chain that shares the modules of `record`.
  explicit ChainedModule(const Data4Bind& record) : record_(record) {}

  /// Appends `module`, which must not be null; this is not checked.
  void addModule(boost::shared_ptr<Module> module);
  /// Returns the chain's modules, as written back.
  const Data4Bind& getData4Bind() const { return record_; }

  /// Returns null; a chain that was created by name writes itself back instead.
  Json::Value getJsonValue4Bind() const override;

  void processImp(ModuleData* data) override;

 private:
  Data4Bind record_;
};

}  // namespace libvarrow
