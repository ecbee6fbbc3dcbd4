// What happened between the host and the controls, newest last, and the controls' alerts.
#pragma once

#include <QWidget>

class QPlainTextEdit;
class QTreeWidget;

namespace vantrelix::demo {

class EventList : public QWidget {
  Q_OBJECT

 public:
  explicit EventList(QWidget* parent = nullptr);

  // Of the control of that name.
  void addEvent(const QString& control, const QString& event, const QString& detail);
  void addCall(const QString& call, const QString& detail = {});
  void setAlerts(const QString& alerts);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void clearAlerts();

 private:
  void add(const QString& from, const QString& what, const QString& detail);

  QTreeWidget* list_;
  QPlainTextEdit* alerts_;
};

}  // namespace vantrelix::demo
