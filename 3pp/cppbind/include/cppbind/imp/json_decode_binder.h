// The decode binder: reads objects from JSON.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>
#include <string>
#include <typeinfo>
#include <utility>

#include "cppbind/BinderImpBase.h"
#include "cppbind/ClassRegisterBase.h"
#include "cppbind/Export.h"
#include "cppbind/Object.h"

namespace cppbind {

class Binder;

namespace detail {
struct KeptJson;
}  // namespace detail

/// Binder that reads objects from JSON.
///
///     cppbind::JsonDecodeBinder binder(&reg);
///     binder.decode(cppbind::readJsonFile("pipeline.json"), record);
///
/// An object that cannot be read is left partly filled; discard it.
class CPPBIND_API JsonDecodeBinder : public BinderImpBase {
 public:
  /// Creates a binder; `reg` (not owned, may be null) creates the objects that JSON names by class.
  explicit JsonDecodeBinder(ClassRegisterBase* reg = nullptr) { class_reg = reg; }

  /// Sets whether keys that no field claims are ignored. False, the initial value: they are errors.
  void setAcceptUnknownKeys(bool accept) { acceptUnknownKeys_ = accept; }
  /// Returns the value of setAcceptUnknownKeys().
  bool acceptsUnknownKeys() const { return acceptUnknownKeys_; }

  /// Reads the fields that `object` declares from the JSON object `json` (null counts as an empty
  /// one). Throws ParseErrorException with the path of the first error.
  template <class T>
  void decode(const Json::Value& json, T& object);

  /// Creates the object that `json`, {"ClassName": {fields}}, describes, with the register `reg`
  /// (null: the binder's own). Throws ParseErrorException and ClassMissRegException; an exception
  /// of the class's constructor becomes a ParseErrorException with the class name as path.
  template <class T>
  void bindDynamicType(const Json::Value& json, boost::shared_ptr<T>& out,
                       const ClassRegisterBase* reg = nullptr) {
    const NamedFields named = namedFields(json, reg);
    withClass(named.className,
              [&] { out.reset(named.reg->create<T>(named.className, *named.fields, this)); });
  }

  /// Returns `imp` as a decode binder. Aborts when it is another binder.
  static JsonDecodeBinder& from(BinderImpBase* imp);

 private:
  struct NamedFields {
    std::string className;
    const Json::Value* fields;
    const ClassRegisterBase* reg;
  };
  NamedFields namedFields(const Json::Value& json, const ClassRegisterBase* reg) const;

  // Reads like decode(), but collects all faults of the object. `bind` is null without a setBind.
  void collect(const Json::Value& json, const std::type_info& type,
               void (*bind)(void* object, Binder& binder), void* object);

  friend class CreationScope;
  friend class detail::Collector;
  boost::shared_ptr<detail::KeptJson> kept_;  // of the outermost object being created
  bool acceptUnknownKeys_ = false;
};

/// RAII guard for factories: keeps the JSON that an object is read from, as long as the object
/// needs it.
///
///     const cppbind::CreationScope scope(decoder, json);
///     decoder.decode(*scope.json(), object);
///
/// The outermost object gets a copy, or a value that is moved here; objects created while it is
/// read share it. With one copy each, a pipeline file of deep chains would take many times its
/// size.
class CPPBIND_API CreationScope {
 public:
  ///@{
  /// Keeps `json`. `decoder` must outlive the scope.
  CreationScope(JsonDecodeBinder& decoder, const Json::Value& json);
  CreationScope(JsonDecodeBinder& decoder, Json::Value&& json);
  ///@}
  ~CreationScope();
  CreationScope(const CreationScope&) = delete;
  CreationScope& operator=(const CreationScope&) = delete;

  /// Returns the JSON to read from and to keep.
  const boost::shared_ptr<const Json::Value>& json() const { return json_; }

 private:
  void keep(boost::shared_ptr<detail::KeptJson> kept);

  JsonDecodeBinder& decoder_;
  boost::shared_ptr<detail::KeptJson> before_;
  boost::shared_ptr<const Json::Value> json_;
};

/// Returns the JSON value in the file at `path`. Throws ParseErrorException when the file cannot be
/// read ("Can not open file [PATH]") or its text does not parse (the parser's messages with lines).
/// Comments are allowed, but not kept; among equal keys in one object the last counts; text after
/// the value is ignored.
CPPBIND_API Json::Value readJsonFile(const boost::filesystem::path& path);

}  // namespace cppbind

#include "cppbind/imp/binder.h"
