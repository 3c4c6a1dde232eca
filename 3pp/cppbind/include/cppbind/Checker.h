// Finds all faults of a JSON text, without running anything.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <memory>
#include <string>
#include <type_traits>
#include <typeindex>
#include <vector>

#include "cppbind/ClassRegisterBase.h"
#include "cppbind/Export.h"
#include "cppbind/Fault.h"
#include "cppbind/JsonPlaces.h"
#include "cppbind/Object.h"
#include "cppbind/imp/field_type.h"
#include "cppbind/type/StringConverter.h"

namespace cppbind {

/// Finds all faults of one JSON text, with their lines and columns. The text is read into new
/// objects as a decode binder reads it. After a fault the fields that its setBind did not reach are
/// read, too, each into a separate value; see describe(). Therefore no code gets a value that was
/// not read or an object that contains a fault.
///
///     cppbind::Checker checker(text, &reg);
///     checker.check<Order>();
///     for (const cppbind::Fault& fault : checker.faults().first) std::cerr << fault.text() <<
///     '\n';
///
/// A text without errors can be loaded; one with errors cannot, and the exception that loading
/// throws is among them. Of an object whose description is incomplete only the first fault is
/// found. A key that is probably a misspelt required one is one fault, at the key. Warnings are: a
/// key given twice, text after the value, and a date, time or duration that is not in the form in
/// which it is written ("90" means "90:00:00").
///
/// A text under the key "$schema" at the top is ignored, though loading refuses it. A type that
/// binds the key, or a map, is read with it.
///
/// Constructors and setBind of the classes run; nothing is printed. A text with few faults takes at
/// most about twice as long as loading. Throws only std::bad_alloc. Not thread-safe.
class CPPBIND_API Checker {
 public:
  /// The path of a value: keys and indices ("[2]").
  using Path = std::vector<std::string>;

  /// Parses `text`. `reg` (may be null) creates the objects that JSON names by class. It must not
  /// change and must outlive the checker.
  explicit Checker(const std::string& text, const ClassRegisterBase* reg = nullptr);
  Checker(const Checker&) = delete;
  Checker& operator=(const Checker&) = delete;
  ~Checker();

  /// Returns a checker of the file at `path`. A file that cannot be read is one error.
  static std::unique_ptr<Checker> ofFile(const boost::filesystem::path& path,
                                         const ClassRegisterBase* reg = nullptr);

  /// Sets whether keys that no field claims are ignored, as JsonDecodeBinder does.
  void setAcceptUnknownKeys(bool accept);
  /// Uses `converter` for fields of `type`. Call it before the first check.
  void setConverter(std::type_index type, boost::shared_ptr<StringConverter> converter);

  /// Returns false when the text is not JSON: json() is null, and nothing should be checked.
  bool isJson() const;
  /// Returns the value of the text, without "$schema".
  const Json::Value& json() const;
  /// Returns the places of the values in the text. Copies share them and may outlive the object.
  const JsonPlaces& places() const;

  /// Reads the whole value as a `T`, which has a default constructor.
  template <class T>
  void check() {
    static_assert(std::is_default_constructible_v<T>);
    check(Path(), json(), detail::fieldType<T>());
  }
  /// Reads `json`, which is inside json() at `path`, as a `T`.
  template <class T>
  void check(const Path& path, const Json::Value& json) {
    static_assert(std::is_default_constructible_v<T>);
    check(path, json, detail::fieldType<T>());
  }
  /// Reads `json`, which is inside json() at `path`, as an object of the class that the last
  /// element of `path` names. `classes` creates it; objects in its fields are created by the
  /// register of the constructor. Returns null when it has a fault. Aborts when `path` is empty.
  std::unique_ptr<Object> checkObject(const Path& path, const Json::Value& json,
                                      const ClassRegisterBase& classes);

  /// Adds a fault, at the value at `fault.path` or the nearest one around it; line and column are
  /// set. With `key` it is at the key of that object.
  void add(Fault fault, const std::string* key = nullptr);

  /// Returns the faults found so far. The first call adds the warnings.
  Faults faults();

 private:
  struct State;

  explicit Checker(std::unique_ptr<State> state);
  void check(const Path& path, const Json::Value& json, const detail::FieldType& type);

  std::unique_ptr<State> state_;
};

/// Returns the faults of `text` as a `T`. `reg` creates the objects that JSON names by class.
template <class T>
Faults check(const std::string& text, const ClassRegisterBase* reg = nullptr) {
  Checker checker(text, reg);
  if (checker.isJson()) checker.check<T>();
  return checker.faults();
}

}  // namespace cppbind

#include "cppbind/imp/binder.h"
