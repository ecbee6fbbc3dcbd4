// The boxes of a facility record that are the host's own.
#pragma once

#include <map>
#include <string>

#include <QGroupBox>

class QDoubleSpinBox;
class QLineEdit;

namespace vantrelix::demo {

class FacilityHost;
struct FacilityField;

class SitePanel : public QGroupBox {
  Q_OBJECT

 public:
  explicit SitePanel(FacilityHost& host, QWidget* parent = nullptr);

  // Shows the record that the host has, and whether it can be typed into.
  void showState();
  // Puts the keyboard into the first box.
  void enter();

 private:
  QWidget* field(const FacilityField& field);
  QWidget* textField(const FacilityField& field);
  QWidget* frequencyField(const FacilityField& field);

  FacilityHost& host_;
  std::map<std::string, QLineEdit*> texts_;
  QDoubleSpinBox* frequency_ = nullptr;
};

}  // namespace vantrelix::demo
