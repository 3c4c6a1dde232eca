#include "libvarrow/module/InputFile.h"

#include <algorithm>

#include "libvarrow/module/run_files.h"
#include "libvarrow/utility/UTFConverter.h"

namespace libvarrow {

namespace {

// A plain pointer: it needs no destructor at the end of a thread.
thread_local RuleFileNames* collector = nullptr;

}  // namespace

boost::filesystem::path InputFile::path(const ModuleData& data) const {
  return inputPath(data, utility::pathFromUtf8(name_));
}

RuleFileNames::RuleFileNames() : outer_(collector) {
  collector = this;
}

RuleFileNames::~RuleFileNames() {
  collector = outer_;
}

void RuleFileNames::note(const RuleFileName& file) {
  if (collector == nullptr || file.empty()) return;
  auto& names = collector->names_;
  if (std::find(names.begin(), names.end(), file.name()) == names.end()) {
    names.push_back(file.name());
  }
}

namespace detail {

std::string fileNameIn(const Json::Value& json) {
  std::string name;
  cppbind::detail::readScalar(json, name);
  return name;
}

void describeFileName(cppbind::ValueDescription& value) {
  value.kind = cppbind::ValueKind::Text;
}

}  // namespace detail

}  // namespace libvarrow
