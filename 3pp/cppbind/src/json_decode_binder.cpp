#include "cppbind/imp/json_decode_binder.h"

#include <algorithm>
#include <boost/current_function.hpp>
#include <boost/make_shared.hpp>
#include <functional>
#include <utility>
#include <vector>

#include "base/json_text.h"
#include "base/system_text.h"
#include "base/text_file.h"
#include "cppbind/Assert.h"

namespace cppbind {

namespace detail {

struct KeptJson {
  explicit KeptJson(const Json::Value& json) : whole(json) {}
  explicit KeptJson(Json::Value&& json) : whole(std::move(json)) {}

  // Compares addresses, which only objects inside `whole` share.
  bool has(const Json::Value& json) {
    if (objects_.empty()) {
      collectObjects(whole);
      std::sort(objects_.begin(), objects_.end(), std::less<>());
    }
    return std::binary_search(objects_.begin(), objects_.end(), &json, std::less<>());
  }

  const Json::Value whole;

 private:
  void collectObjects(const Json::Value& json) {
    if (json.isObject()) objects_.push_back(&json);
    for (const Json::Value& member : json) collectObjects(member);
  }

  std::vector<const Json::Value*> objects_;  // sorted; filled for the first nested object
};

}  // namespace detail

CreationScope::CreationScope(JsonDecodeBinder& decoder, const Json::Value& json)
    : decoder_(decoder), before_(decoder.kept_) {
  if (before_ && before_->has(json)) {
    json_ = boost::shared_ptr<const Json::Value>(before_, &json);
  } else {
    keep(boost::make_shared<detail::KeptJson>(json));
  }
}

CreationScope::CreationScope(JsonDecodeBinder& decoder, Json::Value&& json)
    : decoder_(decoder), before_(decoder.kept_) {
  keep(boost::make_shared<detail::KeptJson>(std::move(json)));
}

void CreationScope::keep(boost::shared_ptr<detail::KeptJson> kept) {
  json_ = boost::shared_ptr<const Json::Value>(kept, &kept->whole);
  decoder_.kept_ = std::move(kept);
}

CreationScope::~CreationScope() {
  decoder_.kept_ = before_;
}

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
  if (!libvarrow::base::readTextFile(path.string(), text)) {
    throw ParseErrorException("Can not open file [" +
                              libvarrow::base::utf8OfSystem(path.generic_string()) + "]");
  }
  Json::Value value;
  std::string errors;
  if (!libvarrow::base::json_text::parse(text, value, errors)) {
    throw ParseErrorException("Can not parse file [" +
                              libvarrow::base::utf8OfSystem(path.generic_string()) +
                              "]: " + errors);
  }
  return value;
}

}  // namespace cppbind
