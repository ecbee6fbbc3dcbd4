// The line lookup control as a widget for any Qt form.
//
// Properties, slots and signals carry the names of the control's members; control() gives the control itself for all
// else, the hooks of its record above all. The widget owns the control. A host that drops the widget in one of its
// signals does so by deleteLater.
#pragma once

#include "controls/scLookLine.h"
#include "qt/LookupWidget.h"

namespace vantrelix::qt {

class LookLine : public LookupWidget {
  Q_OBJECT
  Q_PROPERTY(QString sValueLen READ sValueLen WRITE sValueLen)
  Q_PROPERTY(QString sValueUnit READ sValueUnit WRITE sValueUnit)
  Q_PROPERTY(QString sValueLoss READ sValueLoss WRITE sValueLoss)

 public:
  explicit LookLine(QWidget* parent = nullptr);
  ~LookLine() override;

  scLookLine& control() { return control_; }
  const scLookLine& control() const { return control_; }

  QString sValueLen() const;
  void sValueLen(const QString& length);
  QString sValueUnit() const;
  void sValueUnit(const QString& unit);
  QString sValueLoss() const;
  void sValueLoss(const QString& decibels);

 public Q_SLOTS:
  void sValueFreq(double megahertz) { control_.sValueFreq(megahertz); }
  void Freq(double megahertz) { control_.Freq(megahertz); }
  void RefreshAlerts() { control_.RefreshAlerts(); }
  void Clear() { control_.Clear(); }

 Q_SIGNALS:
  void ChangeLine();

 private:
  scLookLine& control_;  // the one that the base owns
};

}  // namespace vantrelix::qt
