// Rules from a rule file.
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

/// Creates the rules that a JSON file names. The file holds a group, a list of groups, or null. A
/// group holds rules by class name (in any case), each with its parameters, and further groups:
///
///     {
///       "rule_level": 2,                       // of this group and those in it; 1 at the top
///       "LatestFinish": {"limit": 60},
///       "MachineLoad": {"machine": 3, "at_most": 0.9},
///       "rule_list": [{"MachineLoad": {"machine": 4, "at_most": 0.8}}]
///     }
///
/// Rules come out in the order of the keys as the JSON library sorts them, those of "rule_list" at
/// its place among them. Levels, and what is created from what, are logged at DEBUG only.
///
/// The caller owns the rules. They, and `reg` (not null), which creates them, belong to one thread.
///
/// An unknown class throws cppbind::ClassMissRegException, parameters that do not fit a
/// cppbind::ParseErrorException; both say where, "rule_list[1].LatestFinish.limit: not found", and
/// rules made before are freed. What is no rule file at all is logged at ERROR with its place and
/// ends the process with a back-trace: a file that cannot be read or parsed, a group that is no
/// object, a "rule_list" that is no array, a "rule_level" that is no integer. A registered class
/// that is no Rule fails an assertion.
class LIBVARROW_API RuleLoader {
 public:
  /// Owned by the caller; none is null.
  using Rules = std::vector<Rule*>;

  /// The rules of the file at `file`, comments allowed.
  static Rules loadRules(const char* file, const cppbind::ClassRegister* reg);
  /// The same of the file's value.
  static Rules loadRules(Json::Value json, const cppbind::ClassRegister* reg);

  ///@{
  /// The rules of one group, or of a list of groups, inside one of `level`.
  static Rules loadRulesByJsonObj(Json::Value group, const cppbind::ClassRegister* reg, int level);
  static Rules loadRulesByJsonArrary(Json::Value groups, const cppbind::ClassRegister* reg,
                                     int level);
  ///@}

  /// One rule of the class `name`.
  static Rule* loadOneRuleByJsonObj(std::string name, Json::Value parameter,
                                    const cppbind::ClassRegister* reg, int level);
};

}  // namespace libvarrow
