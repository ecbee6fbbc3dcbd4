// The buttons and boxes with which this host drives the control.
#pragma once

#include <QGroupBox>

class QCheckBox;
class QDoubleSpinBox;
class QVBoxLayout;

namespace vantrelix::qt {
class LookAnt;
}

namespace vantrelix::demo {

class HostControls : public QGroupBox {
  Q_OBJECT

 public:
  explicit HostControls(qt::LookAnt& control, QWidget* parent = nullptr);

  // Whether this host has locked the record. The control's own Locked tells of the description alone, which a library
  // antenna locks too.
  bool locked() const;
  // Shows what the control's members give, after the user or the program changed them.
  void showState();

 Q_SIGNALS:
  // What the host did to the control, in the members' names.
  void acted(const QString& call);

 private:
  void addRecord(QVBoxLayout& layout);
  void addBackgrounds(QVBoxLayout& layout);
  void addViews(QVBoxLayout& layout);
  void addPointers(QVBoxLayout& layout);
  QCheckBox* addBox(QVBoxLayout& layout, const QString& name, const QString& caption, const QString& tip);
  void did(const QString& call);

  qt::LookAnt& control_;
  QCheckBox *lock_, *previews_, *gainOnly_, *polarisation_;
  QDoubleSpinBox* bearing_;
};

}  // namespace vantrelix::demo
