// A machine on which any work takes long, and a user who ends each work as soon as its progress comes up.
#pragma once

#include "dialogs/frmProgress.h"
#include "platform/FaultPlatform.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::test {

class SlowMachine : public platform::FaultPlatform {
 public:
  SlowMachine() : FaultPlatform(platform::current()) {}
  std::int64_t steadyMilliseconds() override { return now_ += 60; }

 private:
  std::int64_t now_ = 0;
};

class ImpatientUser : public ScriptedDesktop {
 public:
  void showModeless(Form& form, Activation activation) override {
    ScriptedDesktop::showModeless(form, activation);
    if (auto* progress = dynamic_cast<frmProgress*>(&form)) progress->cmdCancel.userClick();
  }
};

}  // namespace vantrelix::test
