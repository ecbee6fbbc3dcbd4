// The line lookup control as a widget for any Qt form.
//
// Properties, slots and signals carry the names of the control's members; control() gives the control itself for all
// else, the hooks of its record above all. The widget owns the control.
#pragma once

#include <memory>

#include "controls/scLookLine.h"
#include "qt/ControlWidget.h"

namespace vantrelix::qt {

class LookLine : public ControlWidget {
  Q_OBJECT
  Q_PROPERTY(QString sValueFile READ sValueFile WRITE sValueFile)
  Q_PROPERTY(QString sValueID READ sValueID WRITE sValueID)
  Q_PROPERTY(QString sValueDesc READ sValueDesc WRITE sValueDesc)
  Q_PROPERTY(QString sValueLen READ sValueLen WRITE sValueLen)
  Q_PROPERTY(QString sValueUnit READ sValueUnit WRITE sValueUnit)
  Q_PROPERTY(QString sValueLoss READ sValueLoss WRITE sValueLoss)
  Q_PROPERTY(bool Locked READ Locked WRITE Locked)
  Q_PROPERTY(bool BackWhite READ BackWhite WRITE BackWhite)
  Q_PROPERTY(bool BackRed READ BackRed WRITE BackRed)
  Q_PROPERTY(bool BackLtGray READ BackLtGray WRITE BackLtGray)
  Q_PROPERTY(QString Alerts READ Alerts WRITE Alerts NOTIFY NewAlert)

 public:
  explicit LookLine(QWidget* parent = nullptr);
  ~LookLine() override;

  scLookLine& control() { return *control_; }
  const scLookLine& control() const { return *control_; }

  QString sValueFile() const;
  void sValueFile(const QString& file);
  QString sValueID() const;
  void sValueID(const QString& id);
  QString sValueDesc() const;
  void sValueDesc(const QString& description);
  QString sValueLen() const;
  void sValueLen(const QString& length);
  QString sValueUnit() const;
  void sValueUnit(const QString& unit);
  QString sValueLoss() const;
  void sValueLoss(const QString& decibels);

  bool Locked() const { return control_->Locked(); }
  void Locked(bool locked) { control_->Locked(locked); }
  bool BackWhite() const { return control_->BackWhite(); }
  void BackWhite(bool on) { control_->BackWhite(on); }
  bool BackRed() const { return control_->BackRed(); }
  void BackRed(bool on) { control_->BackRed(on); }
  bool BackLtGray() const { return control_->BackLtGray(); }
  void BackLtGray(bool on) { control_->BackLtGray(on); }
  QString Alerts() const;
  void Alerts(const QString& text);

 public Q_SLOTS:
  void sValueFreq(double megahertz) { control_->sValueFreq(megahertz); }
  void RefreshAlerts() { control_->RefreshAlerts(); }
  void Clear() { control_->Clear(); }
  void Update() { control_->Update(); }
  // "" or what failed.
  QString Save();

 Q_SIGNALS:
  void NewAlert();
  void ChangeLine();

 private:
  std::unique_ptr<scLookLine> control_;
};

}  // namespace vantrelix::qt
