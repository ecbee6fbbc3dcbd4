// What the widgets of the lookup controls of a facility share: library file, ID and description, locks, colours, alerts
// and the host's record. Properties, slots and signals carry the names of the control's members.
#pragma once

#include <memory>

#include <QString>

#include "controls/LookupControl.h"
#include "qt/ControlWidget.h"

namespace vantrelix::qt {

class LookupWidget : public ControlWidget {
  Q_OBJECT
  Q_PROPERTY(QString sValueFile READ sValueFile WRITE sValueFile)
  Q_PROPERTY(QString sValueID READ sValueID WRITE sValueID)
  Q_PROPERTY(QString sValueDesc READ sValueDesc WRITE sValueDesc)
  Q_PROPERTY(bool Locked READ Locked WRITE Locked)
  Q_PROPERTY(bool BackWhite READ BackWhite WRITE BackWhite)
  Q_PROPERTY(bool BackRed READ BackRed WRITE BackRed)
  Q_PROPERTY(bool BackLtGray READ BackLtGray WRITE BackLtGray)
  Q_PROPERTY(bool Valid READ Valid)
  Q_PROPERTY(QString Alerts READ Alerts WRITE Alerts NOTIFY NewAlert)

 public:
  ~LookupWidget() override;

  QString sValueFile() const;
  void sValueFile(const QString& file);
  QString sValueID() const;
  void sValueID(const QString& id);
  QString sValueDesc() const;
  void sValueDesc(const QString& description);

  bool Locked() const { return lookup_->Locked(); }
  void Locked(bool locked) { lookup_->Locked(locked); }
  bool BackWhite() const { return lookup_->BackWhite(); }
  void BackWhite(bool on) { lookup_->BackWhite(on); }
  bool BackRed() const { return lookup_->BackRed(); }
  void BackRed(bool on) { lookup_->BackRed(on); }
  bool BackLtGray() const { return lookup_->BackLtGray(); }
  void BackLtGray(bool on) { lookup_->BackLtGray(on); }
  bool Valid() const { return lookup_->Valid(); }
  QString Alerts() const;
  void Alerts(const QString& text);

  // The facility record; its hooks are put through the control. "" or what failed.
  Q_INVOKABLE QString Save();
  Q_INVOKABLE bool bEdit(bool bSilent = false, QString* vReturn = nullptr);
  Q_INVOKABLE QString sHookDBFValue(const QString& sKey) const;
  Q_INVOKABLE void sHookDBFValue(const QString& sKey, const QString& text);

 public Q_SLOTS:
  void ZORUserLogin(const QString& login);
  void Update() { lookup_->Update(); }
  void UpdateINI() { lookup_->UpdateINI(); }
  void UpdateDBF() { lookup_->UpdateDBF(); }
  void Edit() { lookup_->Edit(); }
  void EditUpdate() { lookup_->EditUpdate(); }
  void CancelEdit() { lookup_->CancelEdit(); }
  void DisconnectDBF() { lookup_->DisconnectDBF(); }

 Q_SIGNALS:
  void NewAlert();

 protected:
  LookupWidget(std::unique_ptr<LookupControl> control, QWidget* parent);
  LookupControl& lookup() { return *lookup_; }

 private:
  std::unique_ptr<LookupControl> lookup_;
};

}  // namespace vantrelix::qt
