// Factories of registered classes, and the wrapper class of the objects they create.
#pragma once

#include <json/value.h>

#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "cppbind/BinderImpBase.h"
#include "cppbind/CodeOwner.h"
#include "cppbind/Export.h"
#include "cppbind/Object.h"
#include "cppbind/imp/json_decode_binder.h"
#include "cppbind/imp/json_encode_binder.h"

namespace cppbind {

/// Factory of one registered class.
class CPPBIND_API ObjFactory {
 public:
  /// Creates a factory; `baseProperty` becomes part of the creation record of every object created.
  /// The code of the class belongs to the calling thread's current code owner.
  explicit ObjFactory(Json::Value baseProperty = Json::Value());
  ObjFactory(const ObjFactory&) = delete;
  ObjFactory& operator=(const ObjFactory&) = delete;
  virtual ~ObjFactory();

  /// Returns a new object, owned by the caller, with its fields read from `json` through `binder`
  /// (null: a strict binder without register). Throws ParseErrorException when a field does not
  /// parse.
  virtual Object* create(const std::string& name, const Json::Value& json,
                         BinderImpBase* binder) = 0;

  /// Returns the name of the class that create() creates.
  virtual std::string typeName() const = 0;

  /// Calls the setBind of a new object, or record, with `binder`, which describes. Does nothing for
  /// a class without fields. The default, for factories that do not describe their class, throws
  /// std::logic_error.
  virtual void describeFields(const std::string& name, Binder& binder) const;

  /// Throws a null pointer to the class that create() creates, so that a handler for a pointer to a
  /// base tells whether the class has that base. The default throws one to Object.
  virtual void throwNull() const;

  /// Returns the owner that keeps the class's code loaded.
  const CodeOwner& codeOwner() const { return codeOwner_; }

 protected:
  /// Returns the constructor's `baseProperty`, for the creation records of objects.
  const boost::shared_ptr<const Json::Value>& baseProperty() const { return baseProperty_; }

 private:
  boost::shared_ptr<const Json::Value> baseProperty_;
  CodeOwner codeOwner_ = currentCodeOwner();
};

/// Record of an object's creation. Objects share its values.
struct CPPBIND_API CreationRecord {
  /// The value that the class was registered with.
  boost::shared_ptr<const Json::Value> baseProperty;
  /// The JSON that the object was read from.
  boost::shared_ptr<const Json::Value> originParameter;

  /// Returns {"baseProperty", "originParameter"}, or null for an empty record.
  Json::Value json() const;
};

/// Returns {name: fields}, the JSON form that names an object's class.
CPPBIND_API Json::Value dynamicTypeForm(const std::string& name, Json::Value fields);

namespace detail {

/// First base of an object and therefore destroyed last: keeps the code loaded until the
/// destructors of the other bases have run.
class CodeOwnerHolder {
 public:
  void setCodeOwner(CodeOwner owner) { codeOwner_ = std::move(owner); }

 private:
  CodeOwner codeOwner_;
};

}  // namespace detail

/// Subclass of `T` that stores its creation name and its creation record.
template <class T>
class ObjWrapperT : private detail::CodeOwnerHolder, public T {
 public:
  /// Passes `arguments` to the constructor of `T`.
  template <class... Arguments>
  explicit ObjWrapperT(std::string className, Arguments&&... arguments)
      : T(std::forward<Arguments>(arguments)...), className_(std::move(className)) {}

  /// Sets the record that getBaiscInfoJson() returns.
  void setCreationRecord(CreationRecord record) { creationRecord_ = std::move(record); }
  /// Sets the converters for writing text fields: those that the object was read with. Null, the
  /// initial value: the standard ones.
  void setConverters(boost::shared_ptr<const ConverterTable> converters) {
    converters_ = std::move(converters);
  }
  using detail::CodeOwnerHolder::setCodeOwner;

  /// Returns {"ClassName": {fields}} with the current fields.
  Json::Value getJsonValue4Bind() const override {
    return dynamicTypeForm(className_,
                           JsonEncodeBinder(converters_).encode(static_cast<const T&>(*this)));
  }
  /// Returns the name that the object was created under, in the original spelling.
  std::string dumpStr() const override { return className_; }
  /// Returns the creation record: {"baseProperty": ..., "originParameter": ...}.
  Json::Value getBaiscInfoJson() const override { return creationRecord_.json(); }

 private:
  std::string className_;
  CreationRecord creationRecord_;
  boost::shared_ptr<const ConverterTable> converters_;
};

/// Factory of `T`, which is read depending on its members:
/// - setBind: default-constructed and read in place, so `T` need not be copyable;
/// - a record Data4Bind, which then has the setBind: constructed from the record after that is
///   read, and written through getData4Bind();
/// - neither: `T` has no fields.
///
/// A class derived from one with a record inherits the record and must have its constructor, too,
/// or does not compile: `using Base::Base;`.
template <class T>
class ObjFactoryT : public ObjFactory {
 public:
  /// Inherits the constructor of ObjFactory.
  using ObjFactory::ObjFactory;

  Object* create(const std::string& name, const Json::Value& json, BinderImpBase* binder) override {
    JsonDecodeBinder strict;
    JsonDecodeBinder& decoder = binder == nullptr ? strict : JsonDecodeBinder::from(binder);
    const CreationScope scope(decoder, json);
    std::unique_ptr<ObjWrapperT<T>> object = read(name, *scope.json(), decoder);
    object->setCreationRecord({baseProperty(), scope.json()});
    object->setConverters(decoder.converters());
    object->setCodeOwner(codeOwner());
    return object.release();
  }

  std::string typeName() const override { return cppbind::typeName(typeid(T)); }

  void describeFields([[maybe_unused]] const std::string& name,
                      [[maybe_unused]] Binder& binder) const override {
    if constexpr (bindsThroughRecord<T>) {
      typename T::Data4Bind record;
      if constexpr (hasSetBind<typename T::Data4Bind>) record.setBind(&binder, true);
    } else if constexpr (hasSetBind<T>) {
      const auto object = std::make_unique<ObjWrapperT<T>>(name);
      static_cast<T&>(*object).setBind(&binder, true);
    }
  }

  [[noreturn]] void throwNull() const override { throw static_cast<T*>(nullptr); }

 private:
  static std::unique_ptr<ObjWrapperT<T>> read(const std::string& name, const Json::Value& json,
                                              JsonDecodeBinder& decoder) {
    requireReachableFields<T>();
    if constexpr (bindsThroughRecord<T>) {
      typename T::Data4Bind record;
      decoder.decode(json, record);
      return std::make_unique<ObjWrapperT<T>>(name, record);
    } else {
      auto object = std::make_unique<ObjWrapperT<T>>(name);
      decoder.decode(json, static_cast<T&>(*object));
      return object;
    }
  }
};

}  // namespace cppbind
