#include "cppbind/imp/json_decode_binder.h"

#include <boost/current_function.hpp>

#include "JsonText.h"
#include "TextFile.h"
#include "cppbind/Assert.h"

namespace cppbind {

JsonDecodeBinder& JsonDecodeBinder::from(BinderImpBase* imp) {
  auto* decoder = dynamic_cast<JsonDecodeBinder*>(imp);
  if (decoder == nullptr) {
    assertionFailed("\"bug\" == NULL", __FILE__, __LINE__, BOOST_CURRENT_FUNCTION);
  }
  return *decoder;
}

JsonDecodeBinder::NamedFields JsonDecodeBinder::namedFields(const Json::Value& json,
                                                            const ClassRegisterBase* reg) const {
  if (!json.isObject() || json.size() != 1) {
    throw ParseErrorException("DynamicType object must have a unique key as it's type");
  }
  if (reg == nullptr) reg = class_reg;
  if (reg == nullptr) throw ParseErrorException("no class _register");
  const auto member = json.begin();
  return {member.name(), &*member, reg};
}

Json::Value readJsonFile(const boost::filesystem::path& path) {
  std::string text;
  if (!readTextFile(path.string(), text)) {
    throw ParseErrorException("Can not open file [" + path.string() + "]");
  }
  Json::Value value;
  std::string errors;
  if (!json_text::parse(text, value, errors)) {
    throw ParseErrorException("Can not parse file [" + path.string() + "]: " + errors);
  }
  return value;
}

}  // namespace cppbind
