// The rules that failed in one check, and the objects that the check was about.
#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "libvarrow/xrule/FailReason.h"
#include "libvarrow/xrule/RuleReason.h"

namespace libvarrow {

/// The reasons of one check's failed rules. In JSON: {"refObjList": [...], "ruleReasonList":
/// [...]}; without referred objects, "refObjList" is absent.
class LIBVARROW_API RuleValidatorReason : public FailReason {
 public:
  RuleValidatorReason() = default;
  /// Takes one referred object, as people call it: "job 3".
  explicit RuleValidatorReason(std::string refObj);
  /// Takes two referred objects, such as a job and its machine.
  RuleValidatorReason(std::string first, std::string second);
  /// Takes any number of referred objects.
  explicit RuleValidatorReason(std::vector<std::string> refObjs);

  /// Appends a referred object.
  void addRefObj(const std::string& refObj);
  ///@{
  /// Appends `reason`; takes ownership of a pointer. Writing a null reason as JSON aborts.
  void appendReason(RuleReason* reason);
  void appendReason(const boost::shared_ptr<RuleReason>& reason);
  ///@}

  /// Returns the referred objects in order of addition.
  const std::vector<std::string>& refObjs() const { return refObjs_; }
  /// Returns the reasons in order of addition.
  const std::vector<boost::shared_ptr<RuleReason>>& reasons() const { return reasons_; }

  Json::Value getJsonValueInfo() const override;
  /// Returns one value for each rule reason: its own JSON with "refObjList" added.
  std::vector<Json::Value> getJsonValueInfoV2() const;

 private:
  Json::Value refObjList() const;

  std::vector<std::string> refObjs_;
  std::vector<boost::shared_ptr<RuleReason>> reasons_;
};

}  // namespace libvarrow
