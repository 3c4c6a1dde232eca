// Creators of registered classes, and the wrapper that every created object really is.
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

/// Creates objects of one registered class.
class CPPBIND_API ObjFactory {
 public:
  /// `baseProperty` stands in the creation record of every object made. The code that is made
  /// belongs to the calling thread's current code owner.
  explicit ObjFactory(Json::Value baseProperty = Json::Value());
  ObjFactory(const ObjFactory&) = delete;
  ObjFactory& operator=(const ObjFactory&) = delete;
  virtual ~ObjFactory();

  /// A new object, owned by the caller, with its fields read from `json` through `binder` (null: a
  /// strict binder without registry). Throws ParseErrorException for fields that do not parse.
  virtual Object* create(const std::string& name, const Json::Value& json,
                         BinderImpBase* binder) = 0;

  /// Name of the class that create() makes.
  virtual std::string typeName() const = 0;

  /// Who keeps the class's code loaded.
  const CodeOwner& codeOwner() const { return codeOwner_; }

 protected:
  /// What the constructor was given, for the creation records of objects.
  const boost::shared_ptr<const Json::Value>& baseProperty() const { return baseProperty_; }

 private:
  boost::shared_ptr<const Json::Value> baseProperty_;
  CodeOwner codeOwner_ = currentCodeOwner();
};

/// What a created object remembers of its making, shared with others.
struct CPPBIND_API CreationRecord {
  /// What the class was registered with.
  boost::shared_ptr<const Json::Value> baseProperty;
  /// What the object was read from.
  boost::shared_ptr<const Json::Value> originParameter;

  /// {"baseProperty", "originParameter"}, or null when there is none.
  Json::Value json() const;
};

/// {name: fields}: the form in which JSON names an object's class.
CPPBIND_API Json::Value dynamicTypeForm(const std::string& name, Json::Value fields);

namespace detail {

/// As the first base of an object it goes last: the code of the other bases' destructors is there
/// until they have run.
class CodeOwnerHolder {
 public:
  void setCodeOwner(CodeOwner owner) { codeOwner_ = std::move(owner); }

 private:
  CodeOwner codeOwner_;
};

}  // namespace detail

/// A `T` that knows the name it was created under and what it was read from.
template <class T>
class ObjWrapperT : private detail::CodeOwnerHolder, public T {
 public:
  /// `arguments` go to the constructor of `T`.
  template <class... Arguments>
  explicit ObjWrapperT(std::string className, Arguments&&... arguments)
      : T(std::forward<Arguments>(arguments)...), className_(std::move(className)) {}

  /// What getBaiscInfoJson() returns.
  void setCreationRecord(CreationRecord record) { creationRecord_ = std::move(record); }
  /// With what the object writes its text fields: the converters that it was read with. Null, as at
  /// the start: the standard ones.
  void setConverters(boost::shared_ptr<const ConverterTable> converters) {
    converters_ = std::move(converters);
  }
  using detail::CodeOwnerHolder::setCodeOwner;

  /// {"ClassName": {fields}}, as the fields are now.
  Json::Value getJsonValue4Bind() const override {
    return dynamicTypeForm(className_,
                           JsonEncodeBinder(converters_).encode(static_cast<const T&>(*this)));
  }
  /// The name that the object was created under, spelt as it was then.
  std::string dumpStr() const override { return className_; }
  /// The creation record: {"baseProperty": ..., "originParameter": ...}.
  Json::Value getBaiscInfoJson() const override { return creationRecord_.json(); }

 private:
  std::string className_;
  CreationRecord creationRecord_;
  boost::shared_ptr<const ConverterTable> converters_;
};

/// The factory of `T`. A class with a setBind is default-constructed and read in place, so it need
/// not be copyable; one with a record Data4Bind, which has the setBind then, is constructed from
/// the record once that is read, and written as its getData4Bind() says; a class with neither has
/// no fields. A class that is derived from one with a record inherits the record, so it needs the
/// constructor, too: `using Base::Base;`. Without it, it does not compile.
template <class T>
class ObjFactoryT : public ObjFactory {
 public:
  /// As the base's.
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
