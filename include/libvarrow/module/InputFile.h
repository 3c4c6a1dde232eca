// Fields that name input files.
#pragma once

#include <json/value.h>

#include <boost/filesystem/path.hpp>
#include <string>
#include <utility>
#include <vector>

#include "cppbind/imp/binder.h"
#include "libvarrow/Export.h"

namespace libvarrow {

class ModuleData;

/// The name of an input file, a text in JSON. Relative names start in the folder of the pipeline
/// file, unless the user of the run names another folder.
///
///     binder->field("file", file_).notEmpty().about("The instance to plan.");
///     ...
///     read(file_.path(*data));   // in processImp()
class LIBVARROW_API InputFile {
 public:
  InputFile() = default;
  /// Takes the name as written in the pipeline file, in UTF-8.
  explicit InputFile(std::string name) : name_(std::move(name)) {}

  /// Returns the name as written in the pipeline file.
  const std::string& name() const { return name_; }
  /// Returns true when no file is named.
  bool empty() const { return name_.empty(); }
  /// Returns the file's path and records it as an input of the run; see inputPath().
  boost::filesystem::path path(const ModuleData& data) const;

 private:
  std::string name_;
};

/// The name of a rule file. Hosts check the file together with the pipeline that names it.
class LIBVARROW_API RuleFileName : public InputFile {
 public:
  /// Constructors as those of InputFile.
  using InputFile::InputFile;
};

/// Collector of the names of rule files. While it exists, it receives the name of each RuleFileName
/// that the calling thread reads from JSON. Collectors may be nested; only the innermost one
/// receives names.
///
///     libvarrow::RuleFileNames ruleFiles;
///     const cppbind::Faults faults = libvarrow::checkPipelineFile("pipeline.json", classes);
///     for (const std::string& name : ruleFiles.names()) ...
class LIBVARROW_API RuleFileNames {
 public:
  RuleFileNames();
  RuleFileNames(const RuleFileNames&) = delete;
  RuleFileNames& operator=(const RuleFileNames&) = delete;
  ~RuleFileNames();

  /// Returns the names in the order of their first occurrence.
  const std::vector<std::string>& names() const { return names_; }
  /// Adds the name of `file` to the innermost collector of the calling thread, if any.
  static void note(const RuleFileName& file);

 private:
  RuleFileNames* const outer_;
  std::vector<std::string> names_;
};

namespace detail {

// Return and set the text of a field.
LIBVARROW_API std::string fileNameIn(const Json::Value& json);
LIBVARROW_API void describeFileName(cppbind::ValueDescription& value);

}  // namespace detail

}  // namespace libvarrow

namespace cppbind {

/// Codec of names of input files.
template <>
struct FieldCodec<libvarrow::InputFile> {
  static void read(JsonDecodeBinder&, const Json::Value& json, libvarrow::InputFile& field) {
    field = libvarrow::InputFile(libvarrow::detail::fileNameIn(json));
  }
  static void write(JsonEncodeBinder&, const libvarrow::InputFile& field, Json::Value& json) {
    json = field.name();
  }
  static void describe(ValueDescription& value, Describer&) {
    libvarrow::detail::describeFileName(value);
  }
};

/// Codec of names of rule files.
template <>
struct FieldCodec<libvarrow::RuleFileName> {
  static void read(JsonDecodeBinder&, const Json::Value& json, libvarrow::RuleFileName& field) {
    field = libvarrow::RuleFileName(libvarrow::detail::fileNameIn(json));
    libvarrow::RuleFileNames::note(field);
  }
  static void write(JsonEncodeBinder&, const libvarrow::RuleFileName& field, Json::Value& json) {
    json = field.name();
  }
  static void describe(ValueDescription& value, Describer&) {
    libvarrow::detail::describeFileName(value);
  }
};

}  // namespace cppbind
