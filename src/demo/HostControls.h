// The buttons and boxes with which this host drives the controls of its record.
#pragma once

#include <QGroupBox>

class QCheckBox;
class QDoubleSpinBox;
class QPushButton;
class QVBoxLayout;

namespace vantrelix::qt {
class LookAnt;
class LookAntDesc;
class LookLine;
}  // namespace vantrelix::qt

namespace vantrelix::demo {

class HostControls : public QGroupBox {
  Q_OBJECT

 public:
  HostControls(qt::LookAnt& control, qt::LookLine& line, qt::LookAntDesc& name, QWidget* parent = nullptr);

  // Whether the record is open for its user, and values may be changed.
  void setEditing(bool editing);
  // Shows what the antenna control's members give, after the user or the program changed them.
  void showState();

 Q_SIGNALS:
  // What the host did to the controls, in the members' names.
  void acted(const QString& call);

 private:
  void addBackgrounds(QVBoxLayout& layout);
  void addViews(QVBoxLayout& layout);
  void addMode(QVBoxLayout& layout);
  void addPointers(QVBoxLayout& layout);
  QCheckBox* addBox(QVBoxLayout& layout, const QString& name, const QString& caption, const QString& tip);
  void did(const QString& call);

  qt::LookAnt& control_;
  qt::LookLine& line_;
  qt::LookAntDesc& name_;
  QPushButton* clear_;
  QCheckBox *previews_, *gainOnly_, *polarisation_;
  QDoubleSpinBox* bearing_;
};

}  // namespace vantrelix::demo
