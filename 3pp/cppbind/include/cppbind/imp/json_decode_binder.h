// JSON to objects.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <boost/shared_ptr.hpp>
#include <string>
#include <utility>

#include "cppbind/BinderImpBase.h"
#include "cppbind/ClassRegisterBase.h"
#include "cppbind/Export.h"
#include "cppbind/Object.h"

namespace cppbind {

namespace detail {
struct KeptJson;
}

/// Reads objects from JSON.
///
///     cppbind::JsonDecodeBinder binder(&reg);
///     binder.decode(cppbind::readJsonFile("pipeline.json"), record);
///
/// An object that fails to be read is left partly filled: drop it.
class CPPBIND_API JsonDecodeBinder : public BinderImpBase {
 public:
  /// `reg` (not owned, may be null) creates the objects that JSON names by class.
  explicit JsonDecodeBinder(ClassRegisterBase* reg = nullptr) { class_reg = reg; }

  /// True: keys that no field claims are passed over. False, as at the start: they are errors.
  void setAcceptUnknownKeys(bool accept) { acceptUnknownKeys_ = accept; }
  /// What setAcceptUnknownKeys() set.
  bool acceptsUnknownKeys() const { return acceptUnknownKeys_; }

  /// Reads the fields that `object` declares from the JSON object `json` (null counts as an empty
  /// one). Throws ParseErrorException with the path of the first fault.
  template <class T>
  void decode(const Json::Value& json, T& object);

  /// Creates the object that `json`, {"ClassName": {fields}}, describes. The registry is `reg`, or
  /// the binder's own when `reg` is null. Throws ParseErrorException and ClassMissRegException;
  /// what the class's constructor throws becomes a ParseErrorException with the class name as path.
  template <class T>
  void bindDynamicType(const Json::Value& json, boost::shared_ptr<T>& out,
                       const ClassRegisterBase* reg = nullptr) {
    const NamedFields named = namedFields(json, reg);
    withClass(named.className,
              [&] { out.reset(named.reg->create<T>(named.className, *named.fields, this)); });
  }

  /// `imp` as a decode binder. Any other binder fails an assertion.
  static JsonDecodeBinder& from(BinderImpBase* imp);

 private:
  struct NamedFields {
    std::string className;
    const Json::Value* fields;
    const ClassRegisterBase* reg;
  };
  NamedFields namedFields(const Json::Value& json, const ClassRegisterBase* reg) const;

  friend class CreationScope;
  boost::shared_ptr<detail::KeptJson> kept_;  // of the outermost object in the making
  bool acceptUnknownKeys_ = false;
};

/// For factories: the JSON that an object is read from, kept for as long as the object wants it.
///
///     const cppbind::CreationScope scope(decoder, json);
///     decoder.decode(*scope.json(), object);
///
/// The outermost object gets a copy; those created while it is read share that. One copy for each
/// would take a pipeline file of deep chains to many times its size.
class CPPBIND_API CreationScope {
 public:
  /// `decoder` outlives the scope.
  CreationScope(JsonDecodeBinder& decoder, const Json::Value& json);
  ~CreationScope();
  CreationScope(const CreationScope&) = delete;
  CreationScope& operator=(const CreationScope&) = delete;

  /// The same JSON, to read from and to keep.
  const boost::shared_ptr<const Json::Value>& json() const { return json_; }

 private:
  JsonDecodeBinder& decoder_;
  boost::shared_ptr<detail::KeptJson> before_;
  boost::shared_ptr<const Json::Value> json_;
};

/// The JSON value in the file at `path`. Throws ParseErrorException: "Can not open file [PATH]" for
/// a file that cannot be read, and for text that does not parse the parser's messages with lines.
/// Comments are allowed, but not kept; of equal keys in one object the last counts, and text after
/// the value is ignored.
CPPBIND_API Json::Value readJsonFile(const boost::filesystem::path& path);

}  // namespace cppbind

#include "cppbind/imp/binder.h"
