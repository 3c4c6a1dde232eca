// Random changes of a valid file.
#pragma once

#include <json/value.h>

#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace agreement {

/// Drops, renames, retypes, nests and reorders values of a file of the classes in classes.h, and
/// moves them out of range. Equal seeds give equal changes.
class Changes {
 public:
  explicit Changes(unsigned seed) : random_(seed) {}

  /// Returns one object by class, or a list of some.
  Json::Value objects(bool isList);
  /// Makes one to three changes inside `root`.
  void change(Json::Value& root);

 private:
  void changeValue(Json::Value& value, const std::vector<Json::Value*>& others);
  void changeMember(Json::Value& object);
  void changeElement(Json::Value& list);
  void nest(Json::Value& value);
  const Json::Value& oneOf(const Json::Value& list);
  std::size_t below(std::size_t count) { return random_() % count; }

  std::mt19937 random_;
  bool isOfRules_ = false;  // the file, before it was changed
};

}  // namespace agreement
