// The antenna description control as a widget for any Qt form.
//
// Properties, slots and signals carry the names of the control's members; control() gives the control itself for all
// else, the hooks of its record above all. The widget owns the control. A host that drops the widget in one of its
// signals does so by deleteLater.
#pragma once

#include "controls/scLookAnt_Desc.h"
#include "qt/LookupWidget.h"

namespace vantrelix::qt {

class LookAntDesc : public LookupWidget {
  Q_OBJECT
  Q_PROPERTY(bool Enabled READ Enabled WRITE Enabled)

 public:
  explicit LookAntDesc(QWidget* parent = nullptr);
  ~LookAntDesc() override;

  scLookAnt_Desc& control() { return control_; }
  const scLookAnt_Desc& control() const { return control_; }

  // Of the control; the widget may be disabled besides.
  bool Enabled() const { return control_.Enabled(); }
  void Enabled(bool enabled) { control_.Enabled(enabled); }

 public Q_SLOTS:
  void sValueFreq(double megahertz) { control_.sValueFreq(megahertz); }
  void Clear() { control_.Clear(); }
  void LookupOnly(bool only) { control_.LookupOnly(only); }
  void AntFormMode(vantrelix::eEditLookup mode) { control_.AntFormMode(mode); }
  void sToolTipText(const QString& text);

 Q_SIGNALS:
  void ChangeAntenna();

 private:
  scLookAnt_Desc& control_;  // the one that the base owns
};

}  // namespace vantrelix::qt
