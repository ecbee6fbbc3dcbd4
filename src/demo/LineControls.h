// The line control of the facility record and the one that needs no record, each for the form to place.
#pragma once

#include <QObject>

namespace vantrelix::qt {
class LookLine;
class LookLineALL;
}  // namespace vantrelix::qt

namespace vantrelix::demo {

class LineControls : public QObject {
  Q_OBJECT

 public:
  explicit LineControls(QObject* parent);

  // The record's.
  qt::LookLine& line() { return *line_; }
  // The one without a record.
  qt::LookLineALL& calculator() { return *calculator_; }

  // The working frequency, for the one without a record; the record's own has it from there.
  void calculateAt(double megahertz);

 Q_SIGNALS:
  // An event of the control of that name.
  void heard(const QString& control, const QString& event, const QString& detail);

 private:
  // Of the form's, once it has placed them.
  qt::LookLine* line_;
  qt::LookLineALL* calculator_;
};

}  // namespace vantrelix::demo
