// The antenna lookup control as a widget for any Qt form.
//
// Properties, slots and signals carry the names of the control's members; control() gives the control itself for all
// else. The widget owns the control. Its height is the control's and changes with it (ChangeSize); its width may be
// anything from the control's smallest width.
#pragma once

#include <QColor>

#include "controls/scLookAnt.h"
#include "qt/LookupWidget.h"

namespace vantrelix::qt {

class LookAnt : public LookupWidget {
  Q_OBJECT
  Q_PROPERTY(QString sValueGain READ sValueGain WRITE sValueGain)
  Q_PROPERTY(QString sValueUnit READ sValueUnit WRITE sValueUnit)
  Q_PROPERTY(QString sValueOrient READ sValueOrient WRITE sValueOrient)
  Q_PROPERTY(QString sValueEtilt READ sValueEtilt WRITE sValueEtilt)
  Q_PROPERTY(QString sValueMtilt READ sValueMtilt WRITE sValueMtilt)
  Q_PROPERTY(QString sValueMazim READ sValueMazim WRITE sValueMazim)
  Q_PROPERTY(QString sValuePol READ sValuePol WRITE sValuePol)
  Q_PROPERTY(bool sValueInvert READ sValueInvert WRITE sValueInvert)
  Q_PROPERTY(bool SeePreview READ SeePreview WRITE SeePreview)
  Q_PROPERTY(bool bPolVis READ bPolVis WRITE bPolVis)
  Q_PROPERTY(bool bPatAz READ bPatAz)
  Q_PROPERTY(bool bPatEl READ bPatEl)

 public:
  explicit LookAnt(QWidget* parent = nullptr);
  ~LookAnt() override;

  scLookAnt& control() { return control_; }
  const scLookAnt& control() const { return control_; }

  QString sValueGain() const;
  void sValueGain(const QString& gain);
  QString sValueUnit() const;
  void sValueUnit(const QString& unit);
  QString sValueOrient() const;
  void sValueOrient(const QString& degrees);
  QString sValueEtilt() const;
  void sValueEtilt(const QString& degrees);
  QString sValueMtilt() const;
  void sValueMtilt(const QString& degrees);
  QString sValueMazim() const;
  void sValueMazim(const QString& degrees);
  QString sValuePol() const;
  void sValuePol(const QString& polarisation);
  bool sValueInvert() const { return control_.sValueInvert(); }
  void sValueInvert(bool inverted) { control_.sValueInvert(inverted); }

  bool SeePreview() const { return control_.SeePreview(); }
  void SeePreview(bool see) { control_.SeePreview(see); }
  bool bPolVis() const { return control_.bPolVis(); }
  void bPolVis(bool visible) { control_.bPolVis(visible); }
  bool bPatAz() const { return control_.bPatAz(); }
  bool bPatEl() const { return control_.bPatEl(); }

 public Q_SLOTS:
  void sValueFreq(double megahertz) { control_.sValueFreq(megahertz); }
  void GetAntPat() { control_.GetAntPat(); }
  void Clear() { control_.Clear(); }
  void SeeAzimuth(double degrees, const QColor& colour = {});
  void SeeElevation(double degrees, const QColor& colour = {});
  void LookupOnly(bool only) { control_.LookupOnly(only); }
  void bSeeGainOnly(bool only) { control_.bSeeGainOnly(only); }
  void AntFormMode(vantrelix::eEditLookup mode) { control_.AntFormMode(mode); }

 Q_SIGNALS:
  void ChangeAntenna();
  void ChangeMounting();
  void ChangeSize();

 private:
  scLookAnt& control_;  // the one that the base owns
};

}  // namespace vantrelix::qt
