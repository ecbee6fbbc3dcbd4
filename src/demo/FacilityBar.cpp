#include "demo/FacilityBar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>

#include "demo/FacilityHost.h"
#include "qt/failures.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

namespace {

// In the order of FacilityHost::Place.
constexpr const char* kPlaces[] = {"Facility table", "INI file"};

}  // namespace

FacilityBar::FacilityBar(FacilityHost& host, QWidget* parent)
    : QWidget(parent), host_(host), position_(new QLabel(this)) {
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  addMoves(*layout);
  addEdits(*layout);
  addPlaces(*layout);
  showState();
}

void FacilityBar::addButton(QHBoxLayout& layout, const char* name, const char* caption, const char* tip,
                            const char* keys, std::function<bool()> allowed, std::function<void()> act) {
  auto* button = new QPushButton(caption, this);
  const QKeySequence sequence(keys);
  button->setObjectName(name);
  button->setToolTip(QString("%1 (%2)").arg(tip, sequence.toString(QKeySequence::NativeText)));
  button->setAccessibleName(tip);
  // The box that is being typed into is left first, by keys too: it is the leaving that tells the control.
  connect(button, &QPushButton::clicked, this, [button, act = std::move(act)] {
    button->setFocus(Qt::OtherFocusReason);
    qt::runGuarded(act);
  });
  auto* shortcut = new QShortcut(sequence, this, nullptr, nullptr, Qt::WindowShortcut);
  connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
  buttons_.push_back({button, shortcut, std::move(allowed)});
  layout.addWidget(button);
}

void FacilityBar::addGap(QHBoxLayout& layout) {
  layout.addSpacing(fontMetrics().averageCharWidth());
  layout.addStretch(1);
}

void FacilityBar::addMoves(QHBoxLayout& layout) {
  struct Row {
    const char *name, *caption, *tip, *keys;
    FacilityHost::Move move;
  };
  using Move = FacilityHost::Move;
  constexpr Row rows[] = {
      {"firstButton", "|<", "First record", "Alt+Home", Move::first},
      {"previousButton", "<", "Previous record", "Alt+Left", Move::previous},
      {"nextButton", ">", "Next record", "Alt+Right", Move::next},
      {"lastButton", ">|", "Last record", "Alt+End", Move::last},
  };
  for (const Row& row : rows) {
    addButton(
        layout, row.name, row.caption, row.tip, row.keys, [this, move = row.move] { return host_.canMove(move); },
        [this, move = row.move] { host_.move(move); });
    buttons_.back().button->setFixedWidth(fontMetrics().averageCharWidth() * 5);
  }
  position_->setObjectName("positionLabel");
  layout.addSpacing(fontMetrics().averageCharWidth());
  layout.addWidget(position_);
  addGap(layout);
}

void FacilityBar::addEdits(QHBoxLayout& layout) {
  const auto editing = [this] { return host_.editing(); };
  addButton(
      layout, "editButton", "&Edit", "Open the record for typing", "Ctrl+E", [this] { return !host_.editing(); },
      [this] { host_.edit(); });
  edit_ = buttons_.back().button;
  addButton(layout, "saveButton", "&Save", "Write the record", "Ctrl+S", editing, [this] { host_.save(); });
  addButton(layout, "cancelButton", "&Cancel", "Drop what was typed", "Esc", editing, [this] { host_.cancel(); });
  addGap(layout);
}

void FacilityBar::addPlaces(QHBoxLayout& layout) {
  places_ = new QComboBox(this);
  auto* caption = new QLabel("Record in", this);
  caption->setBuddy(places_);
  places_->setObjectName("placeList");
  places_->setToolTip("Where the record is kept: a row of FACILITY.DBF or the section of FACILITY.INI");
  for (const char* place : kPlaces) places_->addItem(place);
  connect(places_, &QComboBox::activated, this, [this](int index) {
    const auto place = static_cast<FacilityHost::Place>(index);
    if (place != host_.place()) qt::runGuarded([&] { host_.use(place); });
  });
  layout.addWidget(caption);
  layout.addWidget(places_);
}

void FacilityBar::enter() { edit_->setFocus(Qt::OtherFocusReason); }

void FacilityBar::showState() {
  for (const Button& each : buttons_) {
    const bool allowed = each.allowed();
    each.button->setEnabled(allowed);
    each.shortcut->setEnabled(allowed);
  }
  position_->setText(qt::toQt(host_.position()));
  places_->setCurrentIndex(static_cast<int>(host_.place()));
}

}  // namespace vantrelix::demo
