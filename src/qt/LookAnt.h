// The antenna lookup control as a widget for any Qt form.
//
// Properties, slots and signals carry the names of the control's members; control() gives the control itself for all
// else. The widget owns the control. Its height is the control's and changes with it (ChangeSize); its width may be
// anything from the control's smallest width.
#pragma once

#include <memory>

#include <QColor>
#include <QWidget>

#include "controls/scLookAnt.h"

namespace vantrelix::qt {

class ControlView;

class LookAnt : public QWidget {
  Q_OBJECT
  Q_PROPERTY(QString sValueFile READ sValueFile WRITE sValueFile)
  Q_PROPERTY(QString sValueID READ sValueID WRITE sValueID)
  Q_PROPERTY(QString sValueDesc READ sValueDesc WRITE sValueDesc)
  Q_PROPERTY(QString sValueGain READ sValueGain WRITE sValueGain)
  Q_PROPERTY(QString sValueUnit READ sValueUnit WRITE sValueUnit)
  Q_PROPERTY(QString sValueOrient READ sValueOrient WRITE sValueOrient)
  Q_PROPERTY(QString sValueEtilt READ sValueEtilt WRITE sValueEtilt)
  Q_PROPERTY(QString sValueMtilt READ sValueMtilt WRITE sValueMtilt)
  Q_PROPERTY(QString sValueMazim READ sValueMazim WRITE sValueMazim)
  Q_PROPERTY(QString sValuePol READ sValuePol WRITE sValuePol)
  Q_PROPERTY(bool sValueInvert READ sValueInvert WRITE sValueInvert)
  Q_PROPERTY(bool Locked READ Locked WRITE Locked)
  Q_PROPERTY(bool BackWhite READ BackWhite WRITE BackWhite)
  Q_PROPERTY(bool BackRed READ BackRed WRITE BackRed)
  Q_PROPERTY(bool BackLtGray READ BackLtGray WRITE BackLtGray)
  Q_PROPERTY(bool SeePreview READ SeePreview WRITE SeePreview)
  Q_PROPERTY(bool bPolVis READ bPolVis WRITE bPolVis)
  Q_PROPERTY(bool Valid READ Valid)
  Q_PROPERTY(bool bPatAz READ bPatAz)
  Q_PROPERTY(bool bPatEl READ bPatEl)
  Q_PROPERTY(QString Alerts READ Alerts WRITE Alerts NOTIFY NewAlert)

 public:
  explicit LookAnt(QWidget* parent = nullptr);
  ~LookAnt() override;

  scLookAnt& control() { return *control_; }
  const scLookAnt& control() const { return *control_; }

  QString sValueFile() const;
  void sValueFile(const QString& file);
  QString sValueID() const;
  void sValueID(const QString& id);
  QString sValueDesc() const;
  void sValueDesc(const QString& description);
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
  bool sValueInvert() const { return control_->sValueInvert(); }
  void sValueInvert(bool inverted) { control_->sValueInvert(inverted); }

  bool Locked() const { return control_->Locked(); }
  void Locked(bool locked) { control_->Locked(locked); }
  bool BackWhite() const { return control_->BackWhite(); }
  void BackWhite(bool on) { control_->BackWhite(on); }
  bool BackRed() const { return control_->BackRed(); }
  void BackRed(bool on) { control_->BackRed(on); }
  bool BackLtGray() const { return control_->BackLtGray(); }
  void BackLtGray(bool on) { control_->BackLtGray(on); }
  bool SeePreview() const { return control_->SeePreview(); }
  void SeePreview(bool see) { control_->SeePreview(see); }
  bool bPolVis() const { return control_->bPolVis(); }
  void bPolVis(bool visible) { control_->bPolVis(visible); }
  bool Valid() const { return control_->Valid(); }
  bool bPatAz() const { return control_->bPatAz(); }
  bool bPatEl() const { return control_->bPatEl(); }
  QString Alerts() const;
  void Alerts(const QString& text);

  // The facility record; its hooks are put through control().
  Q_INVOKABLE QString Save();
  Q_INVOKABLE bool bEdit(bool bSilent = false, QString* vReturn = nullptr);
  Q_INVOKABLE QString sHookDBFValue(const QString& sKey) const;
  Q_INVOKABLE void sHookDBFValue(const QString& sKey, const QString& text);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 public Q_SLOTS:
  void sValueFreq(double megahertz) { control_->sValueFreq(megahertz); }
  void GetAntPat() { control_->GetAntPat(); }
  void Clear() { control_->Clear(); }
  void SeeAzimuth(double degrees, const QColor& colour = {});
  void SeeElevation(double degrees, const QColor& colour = {});
  void LookupOnly(bool only) { control_->LookupOnly(only); }
  void bSeeGainOnly(bool only) { control_->bSeeGainOnly(only); }
  void Update() { control_->Update(); }
  void UpdateINI() { control_->UpdateINI(); }
  void UpdateDBF() { control_->UpdateDBF(); }
  void Edit() { control_->Edit(); }
  void EditUpdate() { control_->EditUpdate(); }
  void CancelEdit() { control_->CancelEdit(); }
  void DisconnectDBF() { control_->DisconnectDBF(); }

 Q_SIGNALS:
  void NewAlert();
  void ChangeAntenna();
  void ChangeMounting();
  void ChangeSize();

 private:
  std::unique_ptr<scLookAnt> control_;
  ControlView* view_;  // a child of this widget
};

}  // namespace vantrelix::qt
