#include "cppbind/Checker.h"

#include <algorithm>
#include <cstdio>
#include <list>
#include <map>
#include <optional>
#include <string_view>
#include <utility>

#include "base/json_text.h"
#include "base/system_text.h"
#include "base/text_file.h"
#include "base/utf8.h"
#include "collector.h"
#include "cppbind/cppbind.h"
#include "found_faults.h"
#include "time_texts.h"

namespace cppbind {

namespace {

constexpr const char* kSchemaKey = "$schema";

// Returns the offset that the parser's message "* Line 2, Column 5 ..." names, if any.
std::size_t offsetIn(const std::string& text, const std::string& errors) {
  std::size_t line = 0;
  std::size_t column = 0;
  if (std::sscanf(errors.c_str(), "* Line %zu, Column %zu", &line, &column) != 2) {
    return JsonPlaces::kNone;
  }
  std::size_t offset = libvarrow::base::byteOrderMarkLength(text);
  for (; line > 1 && offset < text.size(); ++offset) {
    const bool isEndOfLine =
        text[offset] == '\n' || (text[offset] == '\r' && text.compare(offset + 1, 1, "\n") != 0);
    if (isEndOfLine) --line;
  }
  return offset + column - 1;
}

}  // namespace

struct Checker::State {
  // A value that was checked.
  struct Checked {
    const ValueDescription* description;
    const Json::Value* json;
    Path path;
    bool isOfClass;  // the path ends with the name of the class
  };

  State(const std::string& text, const ClassRegisterBase* reg)
      : reg_(reg), decoder_(const_cast<ClassRegisterBase*>(reg)), found_(JsonPlaces(text)) {}

  // `source` is the beginning of the message about a text that is not JSON.
  void parse(const std::string& text, const std::string& source) {
    Json::Value json;
    std::string errors;
    isJson_ = libvarrow::base::json_text::parse(text, json, errors);
    if (!isJson_) {
      json = Json::Value();
      found_.addAt(offsetIn(text, errors), {Severity::Error, {}, source + errors});
    }
    if (json.isObject() && json.get(kSchemaKey, 0).isString()) {
      json.removeMember(kSchemaKey, &schemaName_);
    }
    // Objects share this value instead of copies of theirs.
    json_.emplace(decoder_, std::move(json));
  }

  // Returns the value of the text as this type reads it.
  const Json::Value& wholeFor(const ValueDescription& value) {
    if (schemaName_.isNull() || !bindsSchemaKey(value)) return *json_->json();
    if (!whole_) {
      Json::Value whole = *json_->json();
      whole[kSchemaKey] = schemaName_;
      whole_.emplace(decoder_, std::move(whole));
    }
    return *whole_->json();
  }

  bool bindsSchemaKey(const ValueDescription& value) {
    if (value.kind == ValueKind::Map) return true;
    if (value.kind != ValueKind::Record) return false;
    const auto& records = describer().records();
    return std::any_of(records.begin(), records.end(), [&](const ObjectDescription& record) {
      if (value.names.empty() || record.id != value.names.front()) return false;
      return record.field(kSchemaKey) != nullptr ||
             std::any_of(record.whole.begin(), record.whole.end(),
                         [&](const auto& whole) { return bindsSchemaKey(whole.value); });
    });
  }

  Describer& describer() {
    if (!describer_) {
      describer_.emplace(reg_, decoder_.converters());
      collector_.emplace(decoder_, *describer_);
    }
    return *describer_;
  }

  const ValueDescription& describe(const detail::FieldType& type) {
    Describer& describer = this->describer();
    const auto [known, isNew] = types_.try_emplace(&type);
    if (isNew && type.describe != nullptr) type.describe(known->second, describer);
    return known->second;
  }

  const ValueDescription& describe(const ClassRegisterBase& classes) {
    Describer& describer = this->describer();
    const auto [known, isNew] = registers_.try_emplace(&classes);
    if (isNew) {
      const Describer::RegisterScope scope(describer, &classes);
      describer.describeObject(known->second, [](const ObjFactory&) { return true; });
    }
    return known->second;
  }

  template <class Read>
  void collect(const Path& path, const Read& read) {
    try {
      read();
    } catch (...) {
      found_.add(detail::Collector::caught(), path);
    }
  }

  void addWarnings() {
    if (!isJson_ || areWarningsAdded_) return;
    areWarningsAdded_ = true;
    detail::TimeTexts texts(describer(), [this](const Path& path, const std::string& form) {
      found_.add({Severity::Warning, path, "means \"" + form + "\""}, nullptr);
    });
    for (const Checked& checked : checked_) {
      if (checked.isOfClass) {
        texts.findInObject(*checked.description, *checked.json, checked.path);
      } else {
        texts.find(*checked.description, *checked.json, checked.path);
      }
    }
    found_.addWarningsOfText();
  }

  const ClassRegisterBase* reg_;
  JsonDecodeBinder decoder_;
  detail::FoundFaults found_;
  bool isJson_ = false;
  bool areWarningsAdded_ = false;
  Json::Value schemaName_;              // under "$schema"; null: none
  std::optional<CreationScope> json_;   // without it
  std::optional<CreationScope> whole_;  // with it, for a type that binds the key
  std::optional<Describer> describer_;
  std::optional<detail::Collector> collector_;
  std::map<const detail::FieldType*, ValueDescription> types_;
  std::map<const ClassRegisterBase*, ValueDescription> registers_;
  std::vector<Checked> checked_;
};

Checker::Checker(std::unique_ptr<State> state) : state_(std::move(state)) {}

Checker::Checker(const std::string& text, const ClassRegisterBase* reg)
    : Checker(std::make_unique<State>(text, reg)) {
  state_->parse(text, "");
}

Checker::~Checker() = default;

std::unique_ptr<Checker> Checker::ofFile(const boost::filesystem::path& path,
                                         const ClassRegisterBase* reg) {
  std::string text;
  const bool isRead = libvarrow::base::readTextFile(path.string(), text);
  auto state = std::make_unique<State>(text, reg);
  if (isRead) {
    state->parse(text, "Can not parse file [" +
                           libvarrow::base::utf8OfSystem(path.generic_string()) + "]: ");
  } else {
    state->json_.emplace(state->decoder_, Json::Value());
    state->found_.addAt(
        JsonPlaces::kNone,
        {Severity::Error,
         {},
         "Can not open file [" + libvarrow::base::utf8OfSystem(path.generic_string()) + "]"});
  }
  return std::unique_ptr<Checker>(new Checker(std::move(state)));
}

void Checker::setAcceptUnknownKeys(bool accept) {
  state_->decoder_.setAcceptUnknownKeys(accept);
}

void Checker::setConverter(std::type_index type, boost::shared_ptr<StringConverter> converter) {
  state_->decoder_.setConverter(type, std::move(converter));
}

bool Checker::isJson() const {
  return state_->isJson_;
}

const Json::Value& Checker::json() const {
  return *state_->json_->json();
}

const JsonPlaces& Checker::places() const {
  return state_->found_.places();
}

void Checker::check(const Path& path, const Json::Value& json, const detail::FieldType& type) {
  const ValueDescription& description = state_->describe(type);
  const Json::Value& source = &json == &this->json() ? state_->wholeFor(description) : json;
  state_->checked_.push_back({&description, &source, path, false});
  if (type.create == nullptr) return;
  const std::unique_ptr<void, void (*)(void*)> value(type.create(), type.destroy);
  state_->collect(path, [&] { type.read(state_->decoder_, source, value.get()); });
}

std::unique_ptr<Object> Checker::checkObject(const Path& path, const Json::Value& json,
                                             const ClassRegisterBase& classes) {
  CPPBIND_ASSERT(!path.empty());
  const std::string& className = path.back();
  state_->checked_.push_back({&state_->describe(classes), &json, path, true});
  const Path owner(path.begin(), path.end() - 1);
  std::unique_ptr<Object> object;
  state_->collect(owner, [&] {
    withClass(className, [&] { object.reset(classes.create(className, json, &state_->decoder_)); });
  });
  return object;
}

void Checker::add(Fault fault, const std::string* key) {
  if (key == nullptr) return state_->found_.add(std::move(fault), nullptr);
  Path keyPath = fault.path;
  keyPath.push_back(*key);
  state_->found_.add(std::move(fault), &keyPath);
}

Faults Checker::faults() {
  state_->addWarnings();
  return state_->found_.result();
}

}  // namespace cppbind
