// The buttons that move among the facility records and edit one.
#pragma once

#include <functional>
#include <vector>

#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QShortcut;

namespace vantrelix::demo {

class FacilityHost;

class FacilityBar : public QWidget {
  Q_OBJECT

 public:
  explicit FacilityBar(FacilityHost& host, QWidget* parent = nullptr);

  // Shows what the host's record allows.
  void showState();
  // Puts the keyboard on the button that begins an edit.
  void enter();

 private:
  struct Button {
    QPushButton* button;
    QShortcut* shortcut;
    std::function<bool()> allowed;
  };
  void addButton(QHBoxLayout& layout, const char* name, const char* caption, const char* tip, const char* keys,
                 std::function<bool()> allowed, std::function<void()> act);
  void addGap(QHBoxLayout& layout);
  void addMoves(QHBoxLayout& layout);
  void addEdits(QHBoxLayout& layout);
  void addPlaces(QHBoxLayout& layout);

  FacilityHost& host_;
  std::vector<Button> buttons_;
  QPushButton* edit_ = nullptr;
  QLabel* position_;
  QComboBox* places_ = nullptr;
};

}  // namespace vantrelix::demo
