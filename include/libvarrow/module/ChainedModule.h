// A module that runs others in order.
#pragma once

#include <boost/shared_ptr.hpp>
#include <vector>

#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"
#include "libvarrow/module/Module.h"

namespace libvarrow {

/// Runs its modules in order on one ModuleData. The module at index i gets the dump path
/// P + "i_NAME/", where P is the chain's own; an empty P becomes a fresh random UUID for every
/// module. In JSON: {"ChainedModule": {"modules": [{"ClassName": {...}}, ...]}}.
///
/// An exception of a module leaves the chain at once; the data keeps that module's dump path.
class LIBVARROW_API ChainedModule : public Module {
 public:
  /// What a pipeline file says of a chain.
  struct LIBVARROW_API Data4Bind {
    /// In the order in which they run.
    std::vector<boost::shared_ptr<Module>> modules;

    /// Key "modules". Reading appends to the modules there are, all or none of them.
    void setBind(cppbind::Binder* binder, bool bindFields);
  };

  ChainedModule() = default;
  /// Shares the modules of `record`.
  explicit ChainedModule(const Data4Bind& record) : record_(record) {}

  /// Appends. `module` must not be null; that is not checked.
  void addModule(boost::shared_ptr<Module> module);
  /// The chain's modules, as it is written back.
  const Data4Bind& getData4Bind() const { return record_; }

  /// Null; a chain that was created by name writes itself back instead.
  Json::Value getJsonValue4Bind() const override;

  void processImp(ModuleData* data) override;

 private:
  Data4Bind record_;
};

}  // namespace libvarrow
