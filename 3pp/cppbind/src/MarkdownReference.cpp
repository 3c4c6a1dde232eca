#include "cppbind/MarkdownReference.h"

#include <string_view>
#include <vector>

#include "base/readable_json.h"
#include "json_form.h"

namespace cppbind {

namespace {

using libvarrow::base::readable_json::onOneLine;

std::string escaped(const std::string& text) {
  std::string made;
  for (const char c : text) {
    if (c == '\n' || c == '\r') {
      made += ' ';
    } else if (c == '<') {
      made += "&lt;";
    } else {
      if (c == '|') made += '\\';
      made += c;
    }
  }
  return made;
}

// A text that begins a line, where "#", for example, would make it a heading.
std::string paragraph(const std::string& text) {
  const std::string made = escaped(text);
  const std::size_t first = made.find_first_not_of(' ');
  if (first == std::string::npos) return std::string();
  const std::string line = made.substr(first);
  const bool isMark = std::string_view("#>-+~").find(line[0]) != std::string_view::npos ||
                      line.compare(0, 2, "* ") == 0 || line.compare(0, 3, "```") == 0;
  return (isMark ? "\\" : "") + line;
}

// Code in a table. A backtick inside ends the code unless two of them enclose it.
std::string code(const std::string& text) {
  std::string made;
  for (const char c : text) {
    if (c == '|') made += '\\';
    made += c == '\n' ? ' ' : c;
  }
  return made.find('`') == std::string::npos ? "`" + made + "`" : "`` " + made + " ``";
}

void append(std::string& list, const std::string& text, const char* separator) {
  if (!list.empty()) list += separator;
  list += text;
}

class ReferenceWriter {
 public:
  explicit ReferenceWriter(const Description& description) : description_(description) {}

  std::string write() {
    section("## Classes\n", description_.classes);
    section("## Records\n", description_.records);
    return text_;
  }

 private:
  void section(const char* heading, const std::vector<ObjectDescription>& objects) {
    if (objects.empty()) return;
    append(text_, heading, "\n");
    for (const ObjectDescription& object : objects) write(object);
  }

  void write(const ObjectDescription& object) {
    text_ += "\n### " + escaped(object.id) + "\n\n";
    if (!object.about.empty()) text_ += paragraph(object.about) + "\n\n";
    if (!object.isComplete()) {
      text_ += "This description is incomplete: " + escaped(object.incompleteBecause) + "\n\n";
    }
    for (const FieldDescription& field : object.whole) {
      text_ += "The value is: " + words(field.value);
      if (!field.value.about.empty()) text_ += ". " + escaped(field.value.about);
      text_ += "\n";
    }
    if (!object.fields.empty()) return table(object.fields);
    if (object.whole.empty() && object.isComplete()) text_ += "It has no keys.\n";
  }

  void table(const std::vector<FieldDescription>& fields) {
    text_ += "| Key | Value | Default | Meaning |\n|---|---|---|---|\n";
    for (const FieldDescription& field : fields) {
      text_ += "| " + code(field.key) + " | " + words(field.value) + " | " + defaultOf(field) +
               " | " + meaning(field.value) + " |\n";
    }
  }

  static std::string defaultOf(const FieldDescription& field) {
    if (field.isRequired) return "required";
    if (!field.defaultValue) return "none";
    return code(onOneLine(detail::shortened(field.value, *field.defaultValue)));
  }

  static std::string meaning(const ValueDescription& value) {
    std::string text = escaped(value.about);
    for (const ValueDescription& element : value.elements) {
      const std::string inner = meaning(element);
      if (!inner.empty()) append(text, "Each: " + inner, " ");
    }
    return text;
  }

  // Returns the kind with its conditions: "list of integer (at least 1) (not empty)".
  std::string words(const ValueDescription& value) const {
    std::string text = kindWords(value);
    std::string conditions;
    for (Constraint constraint : value.constraints) {
      for (Json::Value& bound : constraint.values) bound = detail::shortened(value, bound);
      append(conditions, escaped(constraint.condition()), ", ");
    }
    if (!conditions.empty()) text += " (" + conditions + ")";
    return value.isNullable ? text + " or null" : text;
  }

  std::string kindWords(const ValueDescription& value) const {
    switch (value.kind) {
      case ValueKind::Any:
        return "any value";
      case ValueKind::Boolean:
        return "true or false";
      case ValueKind::Integer:
        return integerWords(value);
      case ValueKind::Number:
        return "number";
      case ValueKind::Text:
        return "text";
      case ValueKind::Date:
        return "date such as `\"2024-03-05\"`";
      case ValueKind::Time:
        return "time such as `\"2024-03-05 07:08:09\"`";
      case ValueKind::Duration:
        return "duration such as `\"26:05:03\"`";
      case ValueKind::Enumeration:
        return enumerationWords(value);
      case ValueKind::List:
        return "list" + elementWords(value);
      case ValueKind::Set:
        return "set, as a list," + elementWords(value);
      case ValueKind::Map:
        return "object with any keys" + elementWords(value);
      case ValueKind::Record:
        return value.names.empty() ? "object" : code(value.names.front());
      case ValueKind::Object:
        return objectWords(value);
    }
    return std::string();
  }

  // Types of at least 32 bits have bounds that nobody reads.
  static std::string integerWords(const ValueDescription& value) {
    constexpr int kUsualMaximum = 65536;
    const bool isNarrow = value.maximum.isNumeric() && value.maximum.asDouble() < kUsualMaximum;
    const bool isUnsigned = value.minimum.isNumeric() && value.minimum.asDouble() == 0;
    std::string text = "integer";
    if (isNarrow || isUnsigned) text += " from " + onOneLine(value.minimum);
    if (isNarrow) text += " to " + onOneLine(value.maximum);
    return text;
  }

  static std::string enumerationWords(const ValueDescription& value) {
    std::string names;
    for (const std::string& name : value.names) append(names, code(onOneLine(name)), ", ");
    return "one of " + names;
  }

  std::string elementWords(const ValueDescription& value) const {
    return value.elements.empty() ? std::string() : " of " + words(value.elements.front());
  }

  std::string objectWords(const ValueDescription& value) const {
    if (value.names.empty()) return "object of a class (none fits)";
    if (value.names.size() == description_.classes.size()) return "object of any class";
    std::string names;
    for (const std::string& name : value.names) append(names, code(name), ", ");
    return (value.names.size() == 1 ? "object of class " : "object of one of the classes ") + names;
  }

  const Description& description_;
  std::string text_;
};

}  // namespace

std::string markdownReference(const Description& description) {
  return ReferenceWriter(description).write();
}

}  // namespace cppbind
