#include "cppbind/BinderImpBase.h"

#include <boost/core/demangle.hpp>
#include <boost/make_shared.hpp>
#include <utility>

#include "cppbind/Assert.h"
#include "cppbind/ParseErrorException.h"

namespace cppbind {

Backup::Backup(BinderImpBase* imp) : armed_(true), imp_(imp), previous_(imp->class_reg) {}

Backup::~Backup() {
  if (!armed_) return;
  imp_->class_reg = previous_;
  armed_ = false;
}

BinderImpBase::BinderImpBase() : class_reg(nullptr) {
  // Converters hold nothing, so one set serves every binder of the process.
  static const std::map<std::type_index, boost::shared_ptr<StringConverter>> standard = {
      {typeid(boost::shared_ptr<std::string>), boost::make_shared<StringPtrConverter>()},
      {typeid(boost::gregorian::date), boost::make_shared<BoostGDateConverter>()},
      {typeid(boost::posix_time::ptime), boost::make_shared<BoostPTimeConverter>()},
      {typeid(boost::posix_time::time_duration), boost::make_shared<BoostTimeDurationConverter>()}};
  converters_ = standard;
}

BinderImpBase::~BinderImpBase() = default;

boost::shared_ptr<Backup> BinderImpBase::regClassRegisterWithAutoRollBack(ClassRegisterBase* reg) {
  CPPBIND_ASSERT(this->class_reg == NULL);  // NOLINT(modernize-use-nullptr): the text is printed
  auto backup = boost::make_shared<Backup>(this);
  class_reg = reg;
  return backup;
}

void BinderImpBase::setConverter(std::type_index type,
                                 boost::shared_ptr<StringConverter> converter) {
  converters_[type] = std::move(converter);
}

const StringConverter& BinderImpBase::converterFor(std::type_index type) const {
  const auto found = converters_.find(type);
  if (found == converters_.end() || !found->second) {
    // Two blanks after the comma: readers of old logs search for this text.
    throw ParseErrorException("BUG,  please register converter for " +
                              boost::core::demangle(type.name()));
  }
  return *found->second;
}

}  // namespace cppbind
