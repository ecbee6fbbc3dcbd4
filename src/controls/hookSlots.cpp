#include "controls/hookSlots.h"

namespace vantrelix {

const IOHooksINIPtr& INIMaster::operator()() {
  if (!hook_) hook_ = std::make_shared<IOHooksINI>();
  return hook_;
}

void INIMaster::operator()(IOHooksINIPtr hook) {
  if (!hook && onNull) onNull();
  hook_ = std::move(hook);
}

const IOHooksINIPtr& INISlot::operator()() {
  if (hook_) return hook_;
  hook_ = std::make_shared<IOHooksINI>();
  if (master_ && master_->isSet()) hook_->iniFile((*master_)()->iniFile());
  hook_->INISection("Facility Data");
  hook_->INIVariable(variable_);
  return hook_;
}

}  // namespace vantrelix
