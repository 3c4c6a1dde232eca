// The common base of reading and writing binders: text converters and the class register.
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

namespace detail {
class Collector;
}

/// Map from field types to their converters.
using ConverterTable = std::map<std::type_index, boost::shared_ptr<StringConverter>>;

/// RAII guard: restores the register of a binder.
class CPPBIND_API Backup : private boost::noncopyable {
 public:
  /// Saves the current register of `imp`, which must outlive this object.
  explicit Backup(BinderImpBase* imp);
  ~Backup();

 private:
  bool armed_;
  BinderImpBase* imp_;
  ClassRegisterBase* previous_;
};

/// Base of JsonDecodeBinder and JsonEncodeBinder. Not thread-safe: use one per task.
class CPPBIND_API BinderImpBase : private boost::noncopyable {
 public:
  /// Creates a binder with the four converters of type/StringConverter.h and without a register.
  BinderImpBase();
  virtual ~BinderImpBase();

  /// Uses `reg` (not owned) for dynamic types until the last copy of the result is released. Aborts
  /// when a register is already set.
  [[nodiscard]] boost::shared_ptr<Backup> regClassRegisterWithAutoRollBack(ClassRegisterBase* reg);

  /// Does the same, also when a register is already set; `reg` may be null.
  [[nodiscard]] boost::shared_ptr<Backup> replaceClassRegister(ClassRegisterBase* reg);

  /// Returns the register in use, or null.
  ClassRegisterBase* classRegister() const { return class_reg; }

  /// Uses `converter` for fields of `type` from now on. Objects that are created by name through
  /// this binder also write themselves with it.
  void setConverter(std::type_index type, boost::shared_ptr<StringConverter> converter);

  /// Returns the converter for `type`. Throws ParseErrorException when none is set.
  const StringConverter& converterFor(std::type_index type) const;
  /// Returns the converter for `type`, or null.
  const StringConverter* findConverter(std::type_index type) const;

  /// Returns the current converters; a later setConverter() changes a copy.
  const boost::shared_ptr<const ConverterTable>& converters() const { return converters_; }

 private:
  friend class Backup;
  friend class detail::Collector;

  boost::shared_ptr<const ConverterTable> converters_;
  // The last converter found: the objects of a list ask for the same fields again.
  mutable std::type_index lastType_ = typeid(void);
  mutable const StringConverter* lastConverter_ = nullptr;

 protected:
  /// Creates a binder with `converters` (shared; null: the standard ones) and without a register.
  explicit BinderImpBase(boost::shared_ptr<const ConverterTable> converters);

  ClassRegisterBase* class_reg;             ///< not owned; null: dynamic types cannot be created
  detail::Collector* collector_ = nullptr;  ///< not owned; set while all faults are collected
};

}  // namespace cppbind
