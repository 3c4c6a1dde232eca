#include "cppbind/BinderImpBase.h"

#include <boost/make_shared.hpp>
#include <utility>

#include "base/NeverDestroyed.h"
#include "cppbind/Assert.h"
#include "cppbind/ParseErrorException.h"
#include "readable_name.h"

namespace cppbind {

Backup::Backup(BinderImpBase* imp) : armed_(true), imp_(imp), previous_(imp->class_reg) {}

Backup::~Backup() {
  if (!armed_) return;
  imp_->class_reg = previous_;
  armed_ = false;
}

namespace {

// Converters are stateless, so all binders share one table until a host adds a converter.
const boost::shared_ptr<const ConverterTable>& standardConverters() {
  static libvarrow::base::NeverDestroyed<const boost::shared_ptr<const ConverterTable>> table(
      boost::make_shared<ConverterTable>(ConverterTable{
          {typeid(boost::shared_ptr<std::string>), boost::make_shared<StringPtrConverter>()},
          {typeid(boost::gregorian::date), boost::make_shared<BoostGDateConverter>()},
          {typeid(boost::posix_time::ptime), boost::make_shared<BoostPTimeConverter>()},
          {typeid(boost::posix_time::time_duration),
           boost::make_shared<BoostTimeDurationConverter>()}}));
  return *table;
}

}  // namespace

BinderImpBase::BinderImpBase() : BinderImpBase(standardConverters()) {}

BinderImpBase::BinderImpBase(boost::shared_ptr<const ConverterTable> converters)
    : converters_(converters ? std::move(converters) : standardConverters()), class_reg(nullptr) {}

BinderImpBase::~BinderImpBase() = default;

boost::shared_ptr<Backup> BinderImpBase::regClassRegisterWithAutoRollBack(ClassRegisterBase* reg) {
  CPPBIND_ASSERT(this->class_reg == NULL);  // NOLINT(modernize-use-nullptr): the text is printed
  return replaceClassRegister(reg);
}

boost::shared_ptr<Backup> BinderImpBase::replaceClassRegister(ClassRegisterBase* reg) {
  auto backup = boost::make_shared<Backup>(this);
  class_reg = reg;
  return backup;
}

void BinderImpBase::setConverter(std::type_index type,
                                 boost::shared_ptr<StringConverter> converter) {
  auto changed = boost::make_shared<ConverterTable>(*converters_);
  (*changed)[type] = std::move(converter);
  converters_ = changed;
  lastConverter_ = nullptr;
}

const StringConverter* BinderImpBase::findConverter(std::type_index type) const {
  const auto found = converters_->find(type);
  return found == converters_->end() ? nullptr : found->second.get();
}

const StringConverter& BinderImpBase::converterFor(std::type_index type) const {
  if (lastConverter_ != nullptr && lastType_ == type) return *lastConverter_;
  const StringConverter* found = findConverter(type);
  if (found == nullptr) {
    // Two blanks after the comma: tools search old logs for this text.
    throw ParseErrorException("BUG,  please register converter for " + readableName(type.name()));
  }
  lastType_ = type;
  lastConverter_ = found;
  return *found;
}

}  // namespace cppbind
