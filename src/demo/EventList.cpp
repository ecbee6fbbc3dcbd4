#include "demo/EventList.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTime>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace vantrelix::demo {

namespace {

constexpr int kMostRows = 1000;
constexpr int kHeightInLines = 13;
constexpr int kLeastLines = 3;  // of the list, its header among them

void setUpList(QTreeWidget& list) {
  list.setObjectName("eventList");
  list.setHeaderLabels({"Time", "From", "What", "Detail"});
  list.setRootIsDecorated(false);
  list.setUniformRowHeights(true);
  list.setAlternatingRowColors(true);
  const int letter = list.fontMetrics().averageCharWidth();
  const int widths[] = {12, 11, 34};
  for (int column = 0; column < 3; ++column) list.setColumnWidth(column, widths[column] * letter);
}

}  // namespace

EventList::EventList(QWidget* parent)
    : QWidget(parent), list_(new QTreeWidget(this)), alerts_(new QPlainTextEdit(this)) {
  setUpList(*list_);
  alerts_->setObjectName("alertText");
  alerts_->setReadOnly(true);
  alerts_->setTabChangesFocus(true);
  alerts_->setPlaceholderText("No alerts");
  auto* eventBox = new QGroupBox("Events", this);
  auto* eventLayout = new QVBoxLayout(eventBox);
  eventLayout->addWidget(list_);
  auto* alertBox = new QGroupBox("Alerts", this);
  auto* alertLayout = new QVBoxLayout(alertBox);
  auto* clear = new QPushButton("Clear aler&ts", this);
  clear->setObjectName("clearAlertsButton");
  clear->setToolTip("Forgets the controls' alerts");
  alertLayout->addWidget(alerts_, 1);
  alertLayout->addWidget(clear, 0, Qt::AlignRight);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(eventBox, 3);
  layout->addWidget(alertBox, 1);
  // On a small screen the form comes first.
  list_->setMinimumHeight(kLeastLines * fontMetrics().lineSpacing());
  alerts_->setMinimumHeight(fontMetrics().lineSpacing() * 9 / 5);
  connect(clear, &QPushButton::clicked, this, &EventList::clearAlerts);
}

QSize EventList::sizeHint() const {
  return {QWidget::sizeHint().width(), kHeightInLines * fontMetrics().lineSpacing()};
}

void EventList::addEvent(const QString& control, const QString& event, const QString& detail) {
  add(control, event, detail);
}

void EventList::addCall(const QString& call, const QString& detail) { add("host", call, detail); }

void EventList::add(const QString& from, const QString& what, const QString& detail) {
  while (list_->topLevelItemCount() >= kMostRows) delete list_->takeTopLevelItem(0);
  auto* item = new QTreeWidgetItem(list_, {QTime::currentTime().toString("HH:mm:ss"), from, what, detail});
  item->setToolTip(3, detail);
  list_->scrollToItem(item);
}

void EventList::setAlerts(const QString& alerts) { alerts_->setPlainText(QString(alerts).replace("\r\n", "\n")); }

}  // namespace vantrelix::demo
