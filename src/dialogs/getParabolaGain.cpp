#include "dialogs/getParabolaGain.h"

#include "dialogs/frmParabGain.h"
#include "dialogs/windowPlacement.h"
#include "foundation/numbers.h"
#include "ui/Desktop.h"

namespace vantrelix {

namespace {

constexpr std::int16_t kTrue = -1;
constexpr std::int16_t kFalse = 0;

}  // namespace

void getParabolaGain(double freq, double& gain, double& diameter, std::string& unit, std::int16_t& ok) {
  frmParabGain form;
  form.Text1[frmParabGain::frequency].setText(formatNumber(freq, "###0.00"));
  desktop().showModal(form);
  SaveFormLoc(form);
  gain = CValP(form.Text1[frmParabGain::gain].text());
  diameter = CValP(form.Text1[frmParabGain::diameter].text());
  unit = form.Combo1.text();
  ok = !form.cancelled() && gain > 0 ? kTrue : kFalse;
}

}  // namespace vantrelix
