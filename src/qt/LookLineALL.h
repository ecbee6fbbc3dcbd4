// The all-lines control as a widget for any Qt form.
//
// Properties, slots and signals carry the names of the control's members; control() gives the control itself for all
// else. The widget owns the control.
#pragma once

#include <memory>

#include "controls/scLookLineALL.h"
#include "qt/ControlWidget.h"

namespace vantrelix::qt {

class LookLineALL : public ControlWidget {
  Q_OBJECT
  Q_PROPERTY(QString sValueDesc READ sValueDesc WRITE sValueDesc)
  Q_PROPERTY(QString sValueLen READ sValueLen WRITE sValueLen)
  Q_PROPERTY(QString sValueUnit READ sValueUnit WRITE sValueUnit)
  Q_PROPERTY(QString sValueLoss READ sValueLoss)
  Q_PROPERTY(QString Alerts READ Alerts WRITE Alerts NOTIFY NewAlert)

 public:
  explicit LookLineALL(QWidget* parent = nullptr);
  ~LookLineALL() override;

  scLookLineALL& control() { return *control_; }
  const scLookLineALL& control() const { return *control_; }

  QString sValueDesc() const;
  void sValueDesc(const QString& description);
  QString sValueLen() const;
  void sValueLen(const QString& length);
  QString sValueUnit() const;
  void sValueUnit(const QString& unit);
  QString sValueLoss() const;
  QString Alerts() const;
  void Alerts(const QString& text);

 public Q_SLOTS:
  void sValueFreq(double megahertz) { control_->sValueFreq(megahertz); }
  void Clear() { control_->Clear(); }
  // Fills the list and brings up what this user chose last.
  void ZORUserLogin(const QString& login);

 Q_SIGNALS:
  void NewAlert();

 private:
  std::unique_ptr<scLookLineALL> control_;
};

}  // namespace vantrelix::qt
