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

  /// The registry in use, or null.
  ClassRegisterBase* classRegister() const { return class_reg; }

  /// Uses `converter` for fields of `type` from now on.
  void setConverter(std::type_index type, boost::shared_ptr<StringConverter> converter);

  /// The converter for `type`. Throws ParseErrorException when there is none.
  const StringConverter& converterFor(std::type_index type) const;

 private:
  friend class Backup;

  std::map<std::type_index, boost::shared_ptr<StringConverter>> converters_;

 protected:
  ClassRegisterBase* class_reg;  ///< not owned; null: dynamic types cannot be created
};

}  // namespace cppbind
