#include <gtest/gtest.h>
#include <set>

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

#include "platform/RunTimeFailure.h"
#include "qt/GridView.h"
#include "qt/makeView.h"
#include "support/TempSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::qt {
namespace {

using Tester = QAbstractItemModelTester;

class GridViewTest : public testing::Test {
 protected:
  GridViewTest() {
    for (const auto& [name, gain] : {std::pair("Dish", 12.5), {"Panel", 2.0}, {"Yagi", 9.25}}) rows->add({name, gain});
    grid->setColumns({{"Name", "NAME", 3000}, {"Gain", "GAIN", 1000, true, "##0.000", GridAlignment::right}});
    grid->setRows(rows);
    grid->setGeometry({0, 0, 6000, 3000});
  }

  void open() {
    window.resize(500, 400);
    auto* made = makeView(*grid, &window);
    view = dynamic_cast<GridView*>(made);
    made->refresh();
    other = new QPushButton("Other", &window);
    other->move(0, 350);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    view->setFocus(Qt::TabFocusReason);
    tester = std::make_unique<Tester>(items(), Tester::FailureReportingMode::Fatal);
  }
  void fill(int count) {
    rows->clear();
    for (int row = 0; row < count; ++row) rows->add({"row " + std::to_string(row), row});
    grid->setRows(rows);
  }

  QAbstractItemModel* items() const { return static_cast<QTableView*>(view)->model(); }
  QLineEdit* editor() const {
    const auto boxes = view->viewport()->findChildren<QLineEdit*>();
    for (QLineEdit* box : boxes) {
      if (box->isVisible()) return box;
    }
    return nullptr;
  }
  void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::keyClick(editor() ? static_cast<QWidget*>(editor()) : view, key, modifiers);
  }
  void type(const char* text) {
    for (const char* at = text; *at; ++at) QTest::keyClick(editor() ? static_cast<QWidget*>(editor()) : view, *at);
  }
  void click(int row, int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QPoint at = view->visualRect(items()->index(row, column)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, modifiers, at);
  }
  void clickRowHead(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QHeaderView* head = view->verticalHeader();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, modifiers, {4, head->sectionViewportPosition(row) + 4});
  }
  QString shown(int row, int column) const { return items()->index(row, column).data().toString(); }
  // The cells that look selected, as "row,column ".
  std::string selected() const {
    std::string text;
    auto cells = view->selectionModel()->selectedIndexes();
    std::sort(cells.begin(), cells.end());
    for (const QModelIndex& cell : cells)
      text += std::to_string(cell.row()) + "," + std::to_string(cell.column()) + " ";
    return text;
  }

  const test::TempSuite suite;
  ScriptedDesktop desktop;
  DesktopInUse inUse{desktop};
  std::shared_ptr<ArrayRows> rows = std::make_shared<ArrayRows>(std::vector<std::string>{"NAME", "GAIN"});
  std::unique_ptr<DataGrid> grid = std::make_unique<DataGrid>("TDBGrid1");
  QDialog window;
  GridView* view = nullptr;
  QPushButton* other = nullptr;
  std::unique_ptr<Tester> tester;
};

// --- The item model.

TEST_F(GridViewTest, TheItemModelPassesTheToolkitsChecksOverEditsAddsDeletesAndSorts) {
  grid->setAllowAddNew(true);
  grid->setAllowSort(true);
  open();
  QSignalSpy resets(items(), &QAbstractItemModel::modelReset);
  grid->appendRow({{"NAME", Value("Horn")}});
  grid->setValue(0, "NAME", "Dish 2");
  grid->removeRow(1);
  grid->removeRow(0);
  EXPECT_TRUE(grid->userEdit(2, 0, "Loop"));
  EXPECT_TRUE(grid->userMove(GridMove::down));
  EXPECT_TRUE(grid->userEdit(3, 0, "Whip"));
  EXPECT_TRUE(grid->userCancelRow());
  grid->userSelectRow(0);
  EXPECT_TRUE(grid->userDeleteRows());
  grid->refreshCells();
  EXPECT_EQ(resets.count(), 0) << "rows are told one by one";
  EXPECT_EQ(items()->rowCount(), 3);
  EXPECT_EQ(shown(0, 0), "Horn");
  EXPECT_EQ(shown(1, 0), "Loop");
  EXPECT_EQ(shown(2, 0), "");
  grid->userHeadClick(0);
  grid->userHeadClick(0);
  EXPECT_EQ(shown(0, 0), "Loop");
  {
    const GridHold hold(*grid);
    fill(7);
    grid->removeRow(3);
    grid->appendRow({});
  }
  EXPECT_EQ(items()->rowCount(), 8);
  grid->removeColumn(0);
  grid->setAllowAddNew(false);
  EXPECT_EQ(items()->columnCount(), 1);
  EXPECT_EQ(items()->rowCount(), 7);
  while (grid->dataRowCount() > 0) grid->removeRow(grid->dataRowCount() / 2);
  EXPECT_EQ(items()->rowCount(), 0);
  grid->setRows(nullptr);
  grid->setColumns({});
  EXPECT_EQ(items()->columnCount(), 0);
}

TEST_F(GridViewTest, OutlivesItsGrid) {
  open();
  grid.reset();
  EXPECT_EQ(items()->rowCount(), 0);
  EXPECT_FALSE(view->isEnabled());
  key(Qt::Key_Down);
  type("x");
  EXPECT_EQ(editor(), nullptr);
}

TEST_F(GridViewTest, OutlivesAGridThatEndsInItsOwnEvent) {
  open();
  grid->beforeColUpdate.listen([this](GridColumnUpdate&) { grid.reset(); });
  type("x");
  key(Qt::Key_Return);
  EXPECT_EQ(grid, nullptr);
  EXPECT_FALSE(view->isEnabled());
}

TEST_F(GridViewTest, ItsWindowMayEndInTheMiddleOfAnEntry) {
  auto* inner = new QWidget(&window);
  auto* own = dynamic_cast<GridView*>(makeView(*grid, inner));
  own->refresh();
  own->resize(300, 200);
  window.show();
  inner->show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  own->setFocus();
  grid->afterColUpdate.listen([inner](int) { delete inner; });
  QTest::keyClick(own, 'x');
  const QPointer<QLineEdit> box = own->viewport()->findChild<QLineEdit*>();
  ASSERT_FALSE(box.isNull());
  QTest::sendKeyEvent(QTest::Press, box, Qt::Key_Return, QString(), Qt::NoModifier);
  EXPECT_TRUE(box.isNull());
  EXPECT_EQ(grid->cellText(0, 0), "x");
}

TEST_F(GridViewTest, AFailureToReadStandsInTheCell) {
  grid->setColumnNumberFormat(1, kFormatTextEvent);
  grid->formatText.listen([](GridCellText&) { throw RunTimeFailure(failure::locked, "Row is locked."); });
  open();
  EXPECT_EQ(shown(0, 1), "#Error");
  EXPECT_EQ(items()->index(0, 1).data(Qt::ToolTipRole).toString(), "Row is locked.");
  EXPECT_EQ(shown(0, 0), "Dish");
  EXPECT_FALSE(items()->index(0, 0).data(Qt::ToolTipRole).isValid());
}

TEST_F(GridViewTest, AChangeMadeWhileAnotherIsToldIsNotLost) {
  bool first = true;
  grid->rowsChanged.listen([&](const GridChange&) {
    if (std::exchange(first, false)) grid->removeRow(0);
  });
  open();
  grid->setValue(2, "NAME", "Loop");
  EXPECT_EQ(items()->rowCount(), 2);
  EXPECT_EQ(shown(1, 0), "Loop");
}

TEST_F(GridViewTest, RowsTakenOutWhileOneIsTakenInAreCountedRight) {
  bool first = true;
  grid->rowsChanged.listen([&](const GridChange&) {
    if (std::exchange(first, false)) grid->removeRow(0);
  });
  open();
  grid->appendRow({{"NAME", Value("Horn")}});
  EXPECT_EQ(items()->rowCount(), 3);
  EXPECT_EQ(shown(0, 0) + shown(2, 0), "PanelHorn");
}

TEST_F(GridViewTest, ACurrentCellSetByOtherHandsIsTheModelsToTakeOrRefuse) {
  open();
  view->selectionModel()->setCurrentIndex(items()->index(1, 1), QItemSelectionModel::NoUpdate);
  EXPECT_EQ(grid->currentRow(), 1);
  grid->beforeUpdate.listen([](bool& refuse) { refuse = true; });
  type("5");
  key(Qt::Key_Tab);
  view->selectionModel()->setCurrentIndex(items()->index(0, 0), QItemSelectionModel::NoUpdate);
  EXPECT_EQ(grid->currentRow(), 1);
  EXPECT_EQ(view->currentIndex().row(), 1);
}

TEST_F(GridViewTest, CellsShownAnewLeaveWhatIsBeingTyped) {
  open();
  type("Ho");
  grid->refreshCells();
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), "Ho");
}

TEST_F(GridViewTest, AnEditEndedByNewRowsIsAskedForAgain) {
  int asked = 0;
  grid->beforeColEdit.listen([&](int, bool&) { ++asked; });
  open();
  key(Qt::Key_F2);
  grid->refresh();
  EXPECT_EQ(editor(), nullptr);
  key(Qt::Key_F2);
  EXPECT_EQ(asked, 2);
}

// --- Keys.

TEST_F(GridViewTest, TypingReplacesTheCellAndEnterGoesDown) {
  open();
  type("Horn");
  EXPECT_EQ(editor()->text(), "Horn");
  EXPECT_EQ(grid->cellText(0, 0), "Dish");
  key(Qt::Key_Return);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(grid->currentRow(), 1);
  EXPECT_EQ(rows->value(0, "NAME"), Value("Horn"));
  EXPECT_TRUE(view->hasFocus());
  key(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(grid->currentRow(), 0);
}

TEST_F(GridViewTest, F2EditsWhatIsThereAndTabGoesRight) {
  open();
  key(Qt::Key_F2);
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), "Dish");
  EXPECT_EQ(editor()->accessibleName(), "Name");
  key(Qt::Key_End);
  type("es");
  key(Qt::Key_Tab);
  EXPECT_EQ(grid->cellText(0, 0), "Dishes");
  EXPECT_EQ(grid->currentColumn(), 1);
  key(Qt::Key_F2);
  EXPECT_TRUE(editor()->alignment().testFlag(Qt::AlignRight)) << "as the column is";
  EXPECT_EQ(editor()->selectedText(), "12.500");
  key(Qt::Key_Backtab);
  EXPECT_EQ(grid->currentColumn(), 0);
}

TEST_F(GridViewTest, EscapeRestoresTheCellThenTheRow) {
  open();
  type("Horn");
  key(Qt::Key_Tab);
  type("5");
  QKeyEvent asWindows(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
  asWindows.ignore();
  QApplication::sendEvent(editor(), &asWindows);
  EXPECT_TRUE(asWindows.isAccepted()) << "the window's shortcuts come behind the box";
  key(Qt::Key_Escape);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(grid->cellText(0, 1), "12.500");
  EXPECT_EQ(grid->cellText(0, 0), "Horn");
  EXPECT_TRUE(window.isVisible());
  key(Qt::Key_Escape);
  EXPECT_EQ(grid->cellText(0, 0), "Dish");
  EXPECT_TRUE(window.isVisible());
  key(Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible()) << "the grid has no more use for it";
}

TEST_F(GridViewTest, ARefusedEntryKeepsTheCellWithItsOldValue) {
  int asked = 0;
  grid->beforeColUpdate.listen([&](GridColumnUpdate& update) {
    ++asked;
    update.cancel = true;
  });
  open();
  type("Horn");
  key(Qt::Key_Return);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(grid->currentRow(), 0);
  EXPECT_EQ(shown(0, 0), "Dish");
  EXPECT_TRUE(view->hasFocus());
  type("Loop");
  click(2, 1);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(grid->currentRow(), 0) << "a click does not get away from it either";
  QTest::qWait(1);
  click(2, 1);
  EXPECT_EQ(grid->currentRow(), 2);
}

TEST_F(GridViewTest, AnEditThatIsNotAllowedOpensNoBox) {
  grid->beforeColEdit.listen([](int, bool& refuse) { refuse = true; });
  open();
  type("x");
  key(Qt::Key_F2);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(grid->cellText(0, 0), "Dish");
}

TEST_F(GridViewTest, LeavingTheBoxForAnotherWidgetTakesTheEntryAndTellsOnceThatTheFocusLeft) {
  int left = 0, got = 0;
  open();
  grid->lostFocus.listen([&] { ++left; });
  grid->gotFocus.listen([&] { ++got; });
  type("Horn");
  key(Qt::Key_Tab);
  type("7");
  EXPECT_EQ(left + got, 0) << "the box is the grid's own";
  QTest::mouseClick(other, Qt::LeftButton);
  other->setFocus(Qt::MouseFocusReason);
  EXPECT_EQ(left, 1);
  EXPECT_EQ(grid->cellText(0, 1), "7.000");
  view->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(got, 1);
}

TEST_F(GridViewTest, TheKeysMoveAsInASpreadsheet) {
  fill(100);
  open();
  const auto at = [this] { return GridCell{grid->currentRow(), grid->currentColumn()}; };
  key(Qt::Key_Down);
  key(Qt::Key_Right);
  EXPECT_EQ(at(), (GridCell{1, 1}));
  key(Qt::Key_Home);
  EXPECT_EQ(at(), (GridCell{1, 0}));
  key(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(at(), (GridCell{99, 1}));
  EXPECT_TRUE(view->viewport()->rect().contains(view->visualRect(view->currentIndex())));
  key(Qt::Key_PageUp);
  EXPECT_EQ(at().row, 99 - (grid->visibleRows() - 1));
  key(Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(at(), (GridCell{0, 0}));
  EXPECT_EQ(view->verticalScrollBar()->value(), 0);
  EXPECT_EQ(view->currentIndex().row(), 0);
}

TEST_F(GridViewTest, TabLeavesBehindTheLastCellAndAtOnceWhereNothingCanBeEdited) {
  open();
  grid->setCurrent(2, 0);
  key(Qt::Key_Tab);
  EXPECT_EQ(grid->currentColumn(), 1);
  key(Qt::Key_Tab);
  EXPECT_TRUE(other->hasFocus());
  grid->setAllowUpdate(false);
  grid->setCurrent(0, 0);
  view->setFocus(Qt::TabFocusReason);
  key(Qt::Key_Tab);
  EXPECT_EQ(grid->currentColumn(), 0);
  EXPECT_TRUE(other->hasFocus());
}

TEST_F(GridViewTest, EnterOnAListIsTheDefaultButtons) {
  grid->setAllowUpdate(false);
  open();
  int clicks = 0;
  other->setDefault(true);
  QObject::connect(other, &QPushButton::clicked, [&] { ++clicks; });
  key(Qt::Key_Return);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(grid->currentRow(), 0);
}

TEST_F(GridViewTest, TheDeleteKeyAsksForSelectedRowsAlone) {
  int asked = 0;
  grid->beforeDelete.listen([&](bool& refuse) { refuse = ++asked == 1; });
  open();
  QKeyEvent unused(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
  QApplication::sendEvent(view, &unused);
  EXPECT_FALSE(unused.isAccepted()) << "it may be the window's";
  EXPECT_EQ(asked, 0);
  clickRowHead(1);
  key(Qt::Key_Delete);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(items()->rowCount(), 3);
  key(Qt::Key_Delete);
  EXPECT_EQ(items()->rowCount(), 2);
  EXPECT_EQ(shown(1, 0), "Yagi");
}

TEST_F(GridViewTest, StandsOnTheRowThatFollowsADeletedOne) {
  open();
  clickRowHead(0);
  key(Qt::Key_Delete);
  EXPECT_EQ(grid->currentRow(), 0);
  EXPECT_EQ(shown(0, 0), "Panel");
  EXPECT_EQ(view->currentIndex().row(), 0);
}

TEST_F(GridViewTest, CopiesWhatIsMarked) {
  open();
  key(Qt::Key_Down, Qt::ShiftModifier);
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "Dish\nPanel");
  key(Qt::Key_A, Qt::ControlModifier);
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "Dish\t12.500\nPanel\t2.000\nYagi\t9.250");
  EXPECT_EQ(selected(), "0,0 0,1 1,0 1,1 2,0 2,1 ");
  grid->setRows(nullptr);
  key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "Dish\t12.500\nPanel\t2.000\nYagi\t9.250") << "nothing to copy";
}

TEST_F(GridViewTest, TypingOnAListGoesToTheRowThatBeginsWithIt) {
  grid->setAllowUpdate(false);
  rows->add({"Pylon"});
  grid->refresh();
  open();
  type("py");
  EXPECT_EQ(grid->currentRow(), 3);
  EXPECT_EQ(editor(), nullptr);
  QTest::qWait(QApplication::keyboardInputInterval() + 20);
  type("y");
  EXPECT_EQ(grid->currentRow(), 2) << "a new search after a pause";
  EXPECT_EQ(selected(), "2,0 2,1 ") << "a list marks its current row";
}

TEST_F(GridViewTest, AListenerSwallowsKeysOfListsAndBoxes) {
  grid->keyPress.listen([](int& code) {
    if (code == 'y' || code == 'x') code = 0;
  });
  open();
  type("axb");
  EXPECT_EQ(editor()->text(), "ab");
  key(Qt::Key_Escape);
  grid->setAllowUpdate(false);
  type("y");
  EXPECT_EQ(grid->currentRow(), 0);
}

TEST_F(GridViewTest, ACharacterOfTheThirdLevelOfTheKeyboardTypesIntoTheCell) {
  open();
  QKeyEvent at(QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, "@");
  QApplication::sendEvent(view, &at);
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), "@");
  QKeyEvent control(QEvent::KeyPress, Qt::Key_K, Qt::ControlModifier, "k");
  QApplication::sendEvent(editor(), &control);
  EXPECT_EQ(editor()->text(), "@");
}

TEST_F(GridViewTest, AMenuOrAnotherProgramOverTheBoxEndsNoEdit) {
  open();
  type("Ho");
  for (const Qt::FocusReason reason : {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason}) {
    ASSERT_NE(editor(), nullptr);
    QFocusEvent away(QEvent::FocusOut, reason);
    QApplication::sendEvent(editor(), &away);
  }
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), "Ho");
  EXPECT_EQ(shown(0, 0), "Dish");
}

TEST_F(GridViewTest, ComposedTextTypesIntoTheCell) {
  open();
  QInputMethodEvent event;
  event.setCommitString(QString::fromUtf8("\xC3\xA4"));
  QApplication::sendEvent(view, &event);
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(fromQt(editor()->text()), "\xC3\xA4");
}

TEST_F(GridViewTest, ALockedOrDisabledGridTakesNoEntry) {
  grid->setLocked(true);
  open();
  type("D");
  key(Qt::Key_F2);
  EXPECT_EQ(editor(), nullptr);
  key(Qt::Key_Down);
  EXPECT_EQ(grid->currentRow(), 1) << "it can be read through";
  grid->setLocked(false);
  grid->setEnabled(false);
  EXPECT_FALSE(view->isEnabled());
}

// --- The mouse.

TEST_F(GridViewTest, AClickGoesToTheCellAndADoubleClickEditsIt) {
  int clicks = 0;
  grid->click.listen([&] { ++clicks; });
  open();
  click(1, 1);
  EXPECT_EQ(grid->currentRow(), 1);
  EXPECT_EQ(grid->currentColumn(), 1);
  EXPECT_EQ(clicks, 1);
  EXPECT_EQ(selected(), "1,1 ");
  click(2, 1, Qt::ShiftModifier);
  EXPECT_EQ(selected(), "1,1 2,1 ");
  QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(items()->index(0, 0)).center());
  ASSERT_NE(editor(), nullptr);
  EXPECT_EQ(editor()->text(), "Dish");
}

TEST_F(GridViewTest, AButtonAtTheLeftTakesTheEntryBeforeItSelects) {
  open();
  type("Horn");
  clickRowHead(2);
  EXPECT_EQ(editor(), nullptr);
  EXPECT_EQ(shown(0, 0), "Horn");
  EXPECT_EQ(rows->value(0, "NAME"), Value("Horn"));
  EXPECT_EQ(selected(), "2,0 2,1 ");
}

TEST_F(GridViewTest, AButtonAtTheLeftSelectsNothingWhereTheEntryIsRefused) {
  grid->beforeColUpdate.listen([](GridColumnUpdate& update) { update.cancel = true; });
  open();
  type("Horn");
  clickRowHead(2);
  EXPECT_EQ(grid->currentRow(), 0);
  EXPECT_EQ(grid->selBookmarks().count(), 0);
  EXPECT_EQ(shown(0, 0), "Dish");
  QTest::qWait(1);
  clickRowHead(2);
  EXPECT_EQ(selected(), "2,0 2,1 ");
}

TEST_F(GridViewTest, TheButtonsAtTheLeftSelectRows) {
  open();
  clickRowHead(0);
  EXPECT_EQ(selected(), "0,0 0,1 ");
  clickRowHead(2, Qt::ControlModifier);
  EXPECT_EQ(grid->selBookmarks().count(), 2);
  EXPECT_EQ(selected(), "0,0 0,1 2,0 2,1 ");
  clickRowHead(1);
  clickRowHead(2, Qt::ShiftModifier);
  EXPECT_EQ(selected(), "1,0 1,1 2,0 2,1 ");
  key(Qt::Key_Up);
  EXPECT_EQ(grid->selBookmarks().count(), 0);
  key(Qt::Key_Space, Qt::ShiftModifier);
  EXPECT_EQ(grid->selBookmarks().items(), std::vector{grid->bookmarkOf(1)});
}

TEST_F(GridViewTest, AHeadingClickSortsAndShowsTheMark) {
  grid->setAllowSort(true);
  open();
  QHeaderView* head = view->horizontalHeader();
  EXPECT_FALSE(head->isSortIndicatorShown());
  const auto clickHead = [head](int column) {
    const QPoint at(head->sectionViewportPosition(column) + head->sectionSize(column) / 2, head->height() / 2);
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {}, at);
  };
  clickHead(1);
  EXPECT_EQ(shown(0, 0), "Panel");
  EXPECT_TRUE(head->isSortIndicatorShown());
  EXPECT_EQ(head->sortIndicatorSection(), 1);
  EXPECT_EQ(head->sortIndicatorOrder(), Qt::AscendingOrder);
  clickHead(1);
  EXPECT_EQ(shown(0, 0), "Dish");
  EXPECT_EQ(head->sortIndicatorOrder(), Qt::DescendingOrder);
}

// --- Looks.

TEST_F(GridViewTest, ColumnsFollowTheModelAndAUsersWidthGoesBackInTwips) {
  int resized = 0;
  grid->colResize.listen([&](int) { ++resized; });
  open();
  QHeaderView* head = view->horizontalHeader();
  EXPECT_EQ(head->sectionSize(0), pixelsOf(3000, view->logicalDpiX()));
  grid->setColumnWidth(0, 4507);
  EXPECT_EQ(grid->column(0).width, 4507) << "the model's own width is not rounded to pixels";
  EXPECT_EQ(resized, 0);
  grid->setColumnWidth(0, 4500);
  EXPECT_EQ(head->sectionSize(0), pixelsOf(4500, view->logicalDpiX()));
  head->resizeSection(1, 90);
  EXPECT_EQ(resized, 1);
  EXPECT_EQ(grid->column(1).width, twipsOf(90, view->logicalDpiX()));
  grid->setColumnVisible(0, false);
  EXPECT_TRUE(head->isSectionHidden(0));
  EXPECT_EQ(grid->column(0).width, 4500);
  grid->setColumnVisible(0, true);
  EXPECT_EQ(head->sectionSize(0), pixelsOf(4500, view->logicalDpiX()));
}

TEST_F(GridViewTest, RowHeightsFollowTheFontUnlessTheModelSaysOtherwise) {
  open();
  const int before = view->rowHeight(0);
  QFont large = view->font();
  large.setPointSizeF(large.pointSizeF() * 2);
  view->setFont(large);
  EXPECT_GT(view->rowHeight(0), before);
  grid->setRowHeight(900);
  EXPECT_EQ(view->rowHeight(0), pixelsOf(900, view->logicalDpiY()));
}

TEST_F(GridViewTest, ScrollingAndTheViewsSizeGoBothWays) {
  fill(200);
  open();
  const int page = view->viewport()->height() / view->rowHeight(0);
  EXPECT_EQ(grid->visibleRows(), page);
  grid->setFirstRow(50);
  EXPECT_EQ(view->rowAt(1), 50);
  view->verticalScrollBar()->setValue(20);
  EXPECT_EQ(grid->firstRow(), 20);
  grid->setFirstRow(199);
  EXPECT_EQ(grid->firstRow(), view->verticalScrollBar()->maximum()) << "no further than the last page";
  grid->setCurrentRow(3);
  EXPECT_EQ(view->rowAt(1), 3);
}

TEST_F(GridViewTest, AMoveToAColumnOutOfViewBringsItIntoView) {
  grid->setColumnWidth(0, 9000);
  open();
  EXPECT_EQ(view->horizontalScrollBar()->value(), 0);
  key(Qt::Key_Right);
  EXPECT_EQ(view->columnAt(view->viewport()->width() - 2), 1);
  EXPECT_GT(view->horizontalScrollBar()->value(), 0);
}

TEST_F(GridViewTest, APlaceSetBeforeTheViewIsShownIsItsFirstPlace) {
  fill(200);
  grid->setFirstRow(120);
  grid->setCurrentRow(120);
  open();
  EXPECT_EQ(view->rowAt(1), 120);
  EXPECT_EQ(grid->firstRow(), 120);
}

TEST_F(GridViewTest, AColouredRowReadsOnAnyDesktop) {
  grid->fetchRowStyle.listen([](int row, GridRowStyle& style) {
    if (row == 1) style.back = 0x8080FF;
  });
  open();
  const QModelIndex cell = items()->index(1, 0);
  EXPECT_EQ(cell.data(Qt::BackgroundRole).value<QColor>(), QColor(255, 128, 128));
  EXPECT_EQ(cell.data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::black));
  EXPECT_FALSE(items()->index(0, 0).data(Qt::BackgroundRole).isValid());
}

TEST_F(GridViewTest, WhileHeldNothingIsPainted) {
  open();
  grid->hold();
  EXPECT_FALSE(view->viewport()->updatesEnabled());
  grid->removeRow(0);
  grid->setValue(1, "NAME", "x");
  window.grab();
  EXPECT_EQ(items()->rowCount(), 3);
  grid->release();
  EXPECT_TRUE(view->viewport()->updatesEnabled());
  EXPECT_EQ(items()->rowCount(), 2);
}

TEST_F(GridViewTest, RowHeadsMarkTheCurrentTheEditedAndTheNewRow) {
  grid->setAllowAddNew(true);
  open();
  const auto spoken = [this](int row) {
    return items()->headerData(row, Qt::Vertical, Qt::AccessibleTextRole).toString();
  };
  EXPECT_EQ(spoken(0), "Current row");
  EXPECT_EQ(spoken(1), "");
  EXPECT_EQ(spoken(3), "New row");
  type("x");
  key(Qt::Key_Tab);
  EXPECT_EQ(spoken(0), "Row being edited");
}

TEST_F(GridViewTest, RowHeadsAreToldWhereTheirMarksChange) {
  open();
  const QSignalSpy told(items(), &QAbstractItemModel::headerDataChanged);
  const auto rowsTold = [&told] {
    std::set<int> sections;
    for (const auto& each : told) sections.insert(each.at(1).toInt());
    return sections;
  };
  grid->setCurrentRow(2);
  EXPECT_EQ(rowsTold(), (std::set{0, 2}));
  grid->setValue(1, "NAME", "Panel 2");
  EXPECT_EQ(rowsTold(), (std::set{0, 1, 2})) << "an entry is marked there too";
}

TEST_F(GridViewTest, IsNamedByItsColumnsOrItsToolTip) {
  open();
  EXPECT_EQ(view->accessibleName(), "Name, Gain");
  grid->setToolTip("Antennas of the library");
  EXPECT_EQ(view->accessibleName(), "Antennas of the library");
}

TEST_F(GridViewTest, AHundredThousandRowsAreShownMovedThroughAndSelected) {
  fill(100000);
  open();
  key(Qt::Key_End, Qt::ControlModifier);
  EXPECT_EQ(grid->currentRow(), 99999);
  grid->userSelectRow(0, false, true);
  EXPECT_EQ(view->selectionModel()->selection().size(), 1);
  EXPECT_EQ(grid->selBookmarks().count(), 100000);
  grid->removeRow(50000);
  grid->appendRow({});
  EXPECT_EQ(items()->rowCount(), 100000);
}

}  // namespace
}  // namespace vantrelix::qt
