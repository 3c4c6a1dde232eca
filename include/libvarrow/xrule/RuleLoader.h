// Loads rules from a rule file.
#pragma once

#include <json/value.h>

#include <string>
#include <vector>

#include "cppbind/ClassRegisterBase.h"
#include "libvarrow/Export.h"
#include "libvarrow/xrule/Rule.h"

namespace cppbind {
class ClassRegister;
}

namespace libvarrow {

/// A loader that creates the rules of a JSON file. The file holds a group, a list of groups, or
/// null. A group holds rules by class name (in upper or lower case), each with its parameters, and
/// further groups:
///
///     {
///       "rule_level": 2,                       // of this group and those in it; 1 at the top
///       "LatestFinish": {"limit": 60},
///       "MachineLoad": {"machine": 3, "at_most": 0.9},
///       "rule_list": [{"MachineLoad": {"machine": 4, "at_most": 0.8}}]
///     }
///
/// The rules have the order in which the JSON library sorts the keys, with those of "rule_list" at
/// the position of that key. Levels, class names and parameters are logged only at DEBUG.
///
/// The caller owns the rules. Throws cppbind::ClassMissRegException when a class is unknown, and
/// cppbind::ParseErrorException when parameters do not fit. Both give the place,
/// "rule_list[1].LatestFinish.limit: not found", and rules created before are freed. Logs an
/// invalid rule file with its place at ERROR and aborts with a back-trace: when the file cannot be
/// read or parsed, a group is not an object, a "rule_list" is not an array, or a "rule_level" is
/// not an integer. Aborts when a registered class is not a Rule. Not thread-safe: the rules and
/// `reg` (not null), which creates them, belong to one thread.
class LIBVARROW_API RuleLoader {
 public:
  /// A list of rules, owned by the caller; none is null.
  using Rules = std::vector<Rule*>;

  /// Returns the rules of the file `file`, which may contain comments.
  static Rules loadRules(const char* file, const cppbind::ClassRegister* reg);
  /// Returns the rules of a rule file's value.
  static Rules loadRules(Json::Value json, const cppbind::ClassRegister* reg);

  ///@{
  /// Returns the rules of one group, or of a list of groups, inside a group of `level`.
  static Rules loadRulesByJsonObj(Json::Value group, const cppbind::ClassRegister* reg, int level);
  static Rules loadRulesByJsonArrary(Json::Value groups, const cppbind::ClassRegister* reg,
                                     int level);
  ///@}

  /// Returns one new rule of the class `name`.
  static Rule* loadOneRuleByJsonObj(std::string name, Json::Value parameter,
                                    const cppbind::ClassRegister* reg, int level);
};

}  // namespace libvarrow
