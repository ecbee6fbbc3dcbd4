#include "qt/plainViews.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyleOptionFocusRect>

namespace vantrelix::qt {

namespace {

// Of a list.
constexpr double kWidestShare = 0.85;  // of the screen
constexpr double kHighestShare = 0.6;
constexpr int kFewestRows = 6;
constexpr int kMostRows = 20;
constexpr int kNarrowest = 40;  // characters

// Keys that move on and do not choose.
bool leavesList(const QKeyEvent& event) {
  return event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab || event.key() == Qt::Key_Escape ||
         event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

bool activates(const QKeyEvent& event) {
  return event.key() == Qt::Key_Space || event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

QStringList toQt(const std::vector<std::string>& entries) {
  QStringList list;
  for (const std::string& entry : entries) list << qt::toQt(entry);
  return list;
}

QStringList itemsOf(const QComboBox& combo) {
  QStringList list;
  for (int i = 0; i < combo.count(); ++i) list << combo.itemText(i);
  return list;
}

}  // namespace

DropDownListView::DropDownListView(DropDownList& model, QWidget* parent) : View(model, parent) {
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(1);
  connect(this, &QComboBox::activated, this, &DropDownListView::choose);
}

void DropDownListView::showState(const DropDownList& model) {
  const QSignalBlocker blocker(this);
  setPalette(coloursOf(model));
  const QStringList entries = toQt(model.entries());
  if (itemsOf(*this) != entries) {
    clear();
    addItems(entries);
  }
  setCurrentIndex(model.listIndex());
}

void DropDownListView::choose(int index) {
  if (handOver([index](DropDownList& list) { list.userSelect(index); })) refresh();
}

void DropDownListView::showPopup() {
  if (locked()) return;
  // A long entry is read whole, however narrow the box.
  const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  view()->setMinimumWidth(std::min(view()->sizeHintForColumn(0) + scrollBar, screen()->availableGeometry().width()));
  QComboBox::showPopup();
}

void DropDownListView::keyPressEvent(QKeyEvent* event) {
  if (!locked() || leavesList(*event)) return QComboBox::keyPressEvent(event);
  event->accept();
}

// Turning the wheel over a form scrolls the form; it must not change a value in passing.
void DropDownListView::wheelEvent(QWheelEvent* event) {
  if (hasFocus() && !locked()) return QComboBox::wheelEvent(event);
  event->ignore();
}

void CheckBoxView::showState(const CheckBox& model) {
  constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
  const QSignalBlocker blocker(this);
  setText(qt::toQt(model.caption()));
  setCheckState(kStates[std::clamp(model.value(), 0, 2)]);
  const bool painted = !isDesktopColour(model.backColor());
  setAutoFillBackground(painted);
  const QPalette& plain = parentWidget()->palette();
  QPalette colours = painted ? coloursOf(model) : plain;
  // The box itself and its tick stay as they are on any ground.
  for (const auto role : {QPalette::Base, QPalette::Text}) colours.setColor(role, plain.color(role));
  setPalette(colours);
}

void CheckBoxView::nextCheckState() {
  if (handOver([](CheckBox& box) { box.userClick(); })) refresh();
}

CommandButtonView::CommandButtonView(CommandButton& model, QWidget* parent) : View(model, parent) {
  setAutoDefault(false);
  connect(this, &QPushButton::clicked, this, [this] { handOver([](CommandButton& button) { button.userClick(); }); });
}

void CommandButtonView::showState(const CommandButton& model) {
  QString caption = qt::toQt(model.caption());
  const qsizetype place = mnemonic_.isNull() ? -1 : caption.indexOf(mnemonic_);
  if (place >= 0) caption.insert(place, u'&');
  setText(caption);
}

void CommandButtonView::setMnemonic(QChar letter) {
  mnemonic_ = letter;
  refresh();
}

void LabelView::showState(const Label& model) {
  setText(linesToQt(model.caption()));
  QPalette colours = parentWidget()->palette();
  const bool link = model.clickable();
  const bool ownColour = !isDesktopColour(model.foreColor());
  colours.setColor(QPalette::WindowText, ownColour ? qt::toQt(model.foreColor(), colours)
                                                   : colours.color(link ? QPalette::Link : QPalette::WindowText));
  setPalette(colours);
  QFont shown = parentWidget()->font();
  shown.setUnderline(link);
  setFont(shown);
  const bool selectable = textInteractionFlags().testFlag(Qt::TextSelectableByMouse);
  setCursor(link ? Qt::PointingHandCursor : selectable ? Qt::IBeamCursor : Qt::ArrowCursor);
}

void LabelView::click() {
  handOver([](Label& label) { label.userClick(); });
}

void LabelView::keyPressEvent(QKeyEvent* event) {
  const bool link = model() && model()->clickable();
  if (!link || !activates(*event) || event->isAutoRepeat()) return QLabel::keyPressEvent(event);
  click();
}

void LabelView::mouseReleaseEvent(QMouseEvent* event) {
  QLabel::mouseReleaseEvent(event);
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) click();
}

void LabelView::paintEvent(QPaintEvent* event) {
  if (elided_) return paintElided();
  QLabel::paintEvent(event);
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.backgroundColor = palette().color(QPalette::Window);
  QPainter painter(this);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void LabelView::makeElided() {
  elided_ = true;
  setMinimumWidth(1);
}

void LabelView::paintElided() {
  QStringList lines = text().split('\n');
  for (QString& line : lines) line = fontMetrics().elidedText(line, Qt::ElideMiddle, width());
  QPainter painter(this);
  style()->drawItemText(&painter, rect(), static_cast<int>(alignment()), palette(), isEnabled(), lines.join('\n'),
                        foregroundRole());
}

// The bar counts in int.
void ProgressBarView::showState(const ProgressBar& model) {
  constexpr int kWhole = 1000;
  setRange(0, model.busy() ? 0 : kWhole);
  if (!model.busy())
    setValue(static_cast<int>(static_cast<double>(model.done()) / static_cast<double>(model.total()) * kWhole));
}

void LineShapeView::showState(const LineShape& model) {
  const QRect box = pixelsOf(model.geometry(), *this);
  const bool lies = box.width() >= box.height();
  setFrameStyle((lies ? QFrame::HLine : QFrame::VLine) | QFrame::Sunken);
  // A line has no thickness in the model; a frame needs two pixels.
  setGeometry(box.x(), box.y(), std::max(box.width(), 2), std::max(box.height(), 2));
}

void LabelView::makeSelectable() {
  setWordWrap(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setFocusPolicy(Qt::StrongFocus);
  refresh();
}

ListBoxView::ListBoxView(ListBox& model, QWidget* parent) : View(model, parent) {
  setUniformItemSizes(true);
  connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
    if (!showing_) handOver([row](ListBox& list) { list.userSelect(row); });
  });
  connect(this, &QListWidget::itemDoubleClicked, this, [this](const QListWidgetItem* item) {
    handOver([at = row(item)](ListBox& list) { list.userDoubleClick(at); });
  });
}

void ListBoxView::showState(const ListBox& model) {
  const QScopedValueRollback<bool> quiet(showing_, true);
  if (const QFont wanted = fontFor(model); font() != wanted) setFont(wanted);
  if (shown_ != model.entries()) {
    shown_ = model.entries();
    clear();
    for (const std::string& entry : shown_) addItem(toQt(entry));
  }
  if (currentRow() != model.listIndex()) setCurrentRow(model.listIndex());
}

QFont ListBoxView::fontFor(const ListBox& model) const {
  const QFont plain = parentWidget()->font();
  if (!model.fixedPitch()) return plain;
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setFamilies({"Courier New", fixed.family()});
  fixed.setPointSizeF(plain.pointSizeF());
  return fixed;
}

// Wide enough for its longest line and high enough for a good number of them, as far as the screen has room.
QSize ListBoxView::sizeHint() const {
  const QSize whole = screen()->availableGeometry().size();
  const QSize room(qRound(whole.width() * kWidestShare), qRound(whole.height() * kHighestShare));
  const int rows = std::clamp(count(), kFewestRows, kMostRows);
  const int rowHeight = count() > 0 ? sizeHintForRow(0) : fontMetrics().lineSpacing();
  const int frame = 2 * frameWidth();
  const int wide = std::max(sizeHintForColumn(0), fontMetrics().averageCharWidth() * kNarrowest);
  return {std::min(wide + frame + verticalScrollBar()->sizeHint().width(), room.width()),
          std::min(rows * rowHeight + frame, room.height())};
}

// The toolkit makes the first line the current one when the focus comes; nobody has chosen it.
void ListBoxView::focusInEvent(QFocusEvent* event) {
  const QPointer<QWidget> self(this);
  showing_ = true;
  View::focusInEvent(event);
  if (!self) return;
  showing_ = false;
  refresh();
}

// The line that is selected comes with its neighbours in sight.
void ListBoxView::showEvent(QShowEvent* event) {
  QListWidget::showEvent(event);
  if (const QListWidgetItem* selected = currentItem()) scrollToItem(selected, PositionAtCenter);
}

// A click on the line the user stands on already is a click too.
void ListBoxView::mousePressEvent(QMouseEvent* event) {
  const int before = currentRow();
  const QPointer<QWidget> self(this);
  QListWidget::mousePressEvent(event);
  if (!self || event->button() != Qt::LeftButton || before < 0) return;
  const QListWidgetItem* pressed = itemAt(event->position().toPoint());
  if (pressed && row(pressed) == before) handOver([before](ListBox& list) { list.userSelect(before); });
}

void FrameView::showState(const Frame& model) {
  caption_ = toQt(model.caption());
  ownTip_ = toQt(model.toolTip());
  if (isVisible()) return fitTitle();
  setTitle(caption_);
}

void FrameView::resizeEvent(QResizeEvent* event) {
  QGroupBox::resizeEvent(event);
  fitTitle();
}

void FrameView::fitTitle() {
  const int room = width() - 2 * fontMetrics().averageCharWidth();
  const QString shown = fontMetrics().elidedText(caption_, Qt::ElideRight, room);
  setTitle(shown);
  setToolTip(shown == caption_ ? ownTip_ : caption_);
}

}  // namespace vantrelix::qt
