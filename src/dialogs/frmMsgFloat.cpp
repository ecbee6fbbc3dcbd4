#include "dialogs/frmMsgFloat.h"

#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr int kTick = 1000;  // milliseconds
constexpr const char* kGrowth = " .";

}  // namespace

frmMsgFloat::frmMsgFloat() : Form("frmMsgFloat") {
  add(Label1);
  add(Timer1);
  Timer1.setInterval(kTick);
  Timer1.tick.listen([this] { Label1.setCaption(Label1.caption() + kGrowth); });
}

void frmMsgFloat::show(const std::string& text, const std::string& caption) {
  Label1.setCaption(text);
  setCaption(caption);
  if (!visible()) desktop().showModeless(*this, Desktop::Activation::leave);
}

}  // namespace vantrelix
