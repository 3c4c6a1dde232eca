// What reading and writing binders have in common: converters and the class registry in use.
#pragma once

#include <boost/noncopyable.hpp>
#include <boost/shared_ptr.hpp>
#include <map>
#include <string>
#include <typeindex>

#include "cppbind/Export.h"
#include "cppbind/type/StringConverter.h"

namespace cppbind {

class BinderImpBase;
class ClassRegisterBase;

/// Field type to converter.
using ConverterTable = std::map<std::type_index, boost::shared_ptr<StringConverter>>;

/// Puts the registry that a binder had back when it goes away.
class CPPBIND_API Backup : private boost::noncopyable {
 public:
  /// Remembers the registry that `imp` has now. `imp` must outlive this object.
  explicit Backup(BinderImpBase* imp);
  ~Backup();

 private:
  bool armed_;
  BinderImpBase* imp_;
  ClassRegisterBase* previous_;
};

/// Base of JsonDecodeBinder and JsonEncodeBinder. Not thread safe; make one for each task.
class CPPBIND_API BinderImpBase : private boost::noncopyable {
 public:
  /// Starts with the four converters of type/StringConverter.h and no registry.
  BinderImpBase();
  virtual ~BinderImpBase();

  /// Uses `reg` (not owned) for dynamic types until the last holder of the result releases it.
  /// Ends the process when a registry is set already.
  [[nodiscard]] boost::shared_ptr<Backup> regClassRegisterWithAutoRollBack(ClassRegisterBase* reg);

  /// As above, whatever registry is in use now; `reg` may be null.
  [[nodiscard]] boost::shared_ptr<Backup> replaceClassRegister(ClassRegisterBase* reg);

  /// The registry in use, or null.
  ClassRegisterBase* classRegister() const { return class_reg; }

  /// Uses `converter` for fields of `type` from now on. Objects that are created by name through
  /// this binder write themselves with it, too.
  void setConverter(std::type_index type, boost::shared_ptr<StringConverter> converter);

  /// The converter for `type`. Throws ParseErrorException when there is none.
  const StringConverter& converterFor(std::type_index type) const;

  /// The converters now; what is set later changes a copy.
  const boost::shared_ptr<const ConverterTable>& converters() const { return converters_; }

 private:
  friend class Backup;

  boost::shared_ptr<const ConverterTable> converters_;
  // The converter asked for last: the same fields come again with every object of a list.
  mutable std::type_index lastType_ = typeid(void);
  mutable const StringConverter* lastConverter_ = nullptr;

 protected:
  /// Starts with `converters` (shared; null: the standard ones) and no registry.
  explicit BinderImpBase(boost::shared_ptr<const ConverterTable> converters);

  ClassRegisterBase* class_reg;  ///< not owned; null: dynamic types cannot be created
};

}  // namespace cppbind
