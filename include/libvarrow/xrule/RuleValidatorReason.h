// The rules that failed in one check, and the objects that the check was about.
#pragma once

#include <boost/shared_ptr.hpp>
#include <string>
#include <vector>

#include "libvarrow/xrule/FailReason.h"
#include "libvarrow/xrule/RuleReason.h"

namespace libvarrow {

/// In JSON: {"refObjList": [...], "ruleReasonList": [...]}; without referred objects the former is
/// not there.
class LIBVARROW_API RuleValidatorReason : public FailReason {
 public:
  RuleValidatorReason() = default;
  /// One referred object, as people call it: "job 3".
  explicit RuleValidatorReason(std::string refObj);
  /// Two referred objects, such as a job and its machine.
  RuleValidatorReason(std::string first, std::string second);
  /// Any number of them.
  explicit RuleValidatorReason(std::vector<std::string> refObjs);

  /// Appends a referred object.
  void addRefObj(const std::string& refObj);
  ///@{
  /// Appends; of the pointer takes ownership. A null reason ends the process when the reasons are
  /// written as JSON.
  void appendReason(RuleReason* reason);
  void appendReason(const boost::shared_ptr<RuleReason>& reason);
  ///@}

  /// In the order they were added.
  const std::vector<std::string>& refObjs() const { return refObjs_; }
  /// In the order they were appended.
  const std::vector<boost::shared_ptr<RuleReason>>& reasons() const { return reasons_; }

  Json::Value getJsonValueInfo() const override;
  /// A value for each rule reason: its own JSON with "refObjList" added.
  std::vector<Json::Value> getJsonValueInfoV2() const;

 private:
  Json::Value refObjList() const;

  std::vector<std::string> refObjs_;
  std::vector<boost::shared_ptr<RuleReason>> reasons_;
};

}  // namespace libvarrow
