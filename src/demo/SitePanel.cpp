#include "demo/SitePanel.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>

#include "demo/FacilityHost.h"
#include "foundation/numbers.h"
#include "qt/qtText.h"

namespace vantrelix::demo {

using qt::fromQt;
using qt::toQt;

namespace {

constexpr const char* kFrequency = "TX_FREQMHZ";
constexpr int kRows = 2;  // of boxes
constexpr int kLeastLetters = 11, kLeastLongLetters = 17;

void fill(QLineEdit& box, const std::string& text) {
  if (fromQt(box.text()) == text) return;
  box.setText(toQt(text));
  box.setCursorPosition(0);
}

// A box that takes no typing stands in the grey of the form, as those of the control do.
void dress(QWidget& box, bool open) {
  QPalette colours;
  if (!open) colours.setColor(QPalette::Base, colours.color(QPalette::Window));
  box.setPalette(colours);
}

}  // namespace

SitePanel::SitePanel(FacilityHost& host, QWidget* parent) : QGroupBox("Facility", parent), host_(host) {
  auto* layout = new QGridLayout(this);
  layout->setHorizontalSpacing(fontMetrics().averageCharWidth());
  const auto& fields = host_.site().fields();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const int row = static_cast<int>(i) % kRows;
    const int column = 2 * (static_cast<int>(i) / kRows);
    QWidget* box = field(fields[i]);
    auto* caption = new QLabel(fields[i].caption, this);
    caption->setBuddy(box);
    layout->addWidget(caption, row, column);
    layout->addWidget(box, row, column + 1);
    // The first column holds the long texts.
    layout->setColumnStretch(column + 1, column == 0 ? 3 : 2);
  }
  showState();
}

QWidget* SitePanel::field(const FacilityField& field) {
  return field.name == std::string(kFrequency) ? frequencyField(field) : textField(field);
}

QWidget* SitePanel::textField(const FacilityField& field) {
  auto* box = new QLineEdit(this);
  box->setObjectName(field.name);
  box->setMinimumWidth((field.isNumber() ? kLeastLetters : kLeastLongLetters) * fontMetrics().averageCharWidth());
  texts_[field.name] = box;
  connect(box, &QLineEdit::textEdited, this,
          [this, name = field.name](const QString& text) { host_.siteText(name, fromQt(text)); });
  return box;
}

QWidget* SitePanel::frequencyField(const FacilityField& field) {
  frequency_ = new QDoubleSpinBox(this);
  frequency_->setObjectName("frequencySpin");
  frequency_->setRange(0, 100000);
  frequency_->setDecimals(4);
  frequency_->setSuffix(" MHz");
  frequency_->setSpecialValueText("not set");
  frequency_->setToolTip("The working frequency that the host gives the control");
  connect(frequency_, &QDoubleSpinBox::valueChanged, this, [this, name = field.name](double megahertz) {
    host_.siteText(name, megahertz == 0 ? "" : generalText(megahertz));
  });
  return frequency_;
}

void SitePanel::showState() {
  const bool editing = host_.editing();
  for (const auto& [name, box] : texts_) {
    fill(*box, host_.site().text(name));
    box->setReadOnly(!editing);
    dress(*box, editing);
  }
  const QSignalBlocker blocker(frequency_);
  const double frequency = CValP(host_.site().text(kFrequency));
  // Putting it again would tidy the text under the hands of who types it.
  if (frequency_->value() != frequency) frequency_->setValue(frequency);
  frequency_->setReadOnly(!editing);
  dress(*frequency_, editing);
  frequency_->setButtonSymbols(editing ? QDoubleSpinBox::UpDownArrows : QDoubleSpinBox::NoButtons);
}

void SitePanel::enter() {
  QLineEdit* first = texts_[host_.site().fields().front().name];
  first->setFocus(Qt::TabFocusReason);
}

}  // namespace vantrelix::demo
