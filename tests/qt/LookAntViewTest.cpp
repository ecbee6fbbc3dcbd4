#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QWindow>

#include "qt/LookAnt.h"
#include "qt/qtText.h"
#include "support/TempSuite.h"
#include "tables/installSuite.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::qt {
namespace {

class LookAntView : public testing::Test {
 protected:
  LookAntView() {
    installSuite(suite_.path());
    look_ = std::make_unique<LookAnt>();
    look_->control().ZORUserLogin("");
    look_->show();
    look_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(look_.get()));
  }

  QLineEdit& box(const char* name) { return *look_->findChild<QLineEdit*>(name); }
  QComboBox& list(const char* name) { return *look_->findChild<QComboBox*>(name); }
  void enter(const char* name) { box(name).setFocus(Qt::TabFocusReason); }
  void choose(const char* name, int index) {
    list(name).setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list(name), Qt::Key_Home);
    for (int i = 0; i < index; ++i) QTest::keyClick(&list(name), Qt::Key_Down);
  }

  test::TempSuite suite_;
  ScriptedDesktop desktop_;
  DesktopInUse inUse_{desktop_};
  std::unique_ptr<LookAnt> look_;
};

TEST_F(LookAntView, ATypedGainPassesTheKeyFilterAndIsReformattedOnLeaving) {
  QSignalSpy changes(look_.get(), &LookAnt::ChangeAntenna);
  enter("txtGain");
  QTest::keyClicks(&box("txtGain"), "1x2.a5N");
  EXPECT_EQ(box("txtGain").text(), "12.5");
  EXPECT_EQ(look_->sValueGain(), "12.5");
  enter("txtOrient");
  EXPECT_EQ(box("txtGain").text(), "12.50");
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(LookAntView, ARefusedKeyLeavesTheSelectedTextAlone) {
  look_->sValueOrient("120");
  enter("txtOrient");
  EXPECT_EQ(box("txtOrient").selectedText(), "120");
  QTest::keyClicks(&box("txtOrient"), "x");
  EXPECT_EQ(box("txtOrient").selectedText(), "120");
  QTest::keyClicks(&box("txtOrient"), "7");
  EXPECT_EQ(look_->sValueOrient(), "7");
}

TEST_F(LookAntView, APastedTextIsFilteredCharacterByCharacter) {
  QApplication::clipboard()->setText("4a5\n.2 deg");
  enter("txtOrient");
  QTest::keyClick(&box("txtOrient"), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(box("txtOrient").text(), "45.2");
  EXPECT_EQ(look_->sValueOrient(), "45.2");
  EXPECT_EQ(box("txtOrient").cursorPosition(), 4);
}

TEST_F(LookAntView, APasteOfWhichNothingPassesKeepsWhatWasSelected) {
  look_->sValueOrient("120");
  QApplication::clipboard()->setText("north");
  enter("txtOrient");
  box("txtOrient").paste();
  EXPECT_EQ(box("txtOrient").text(), "120");
  EXPECT_EQ(look_->sValueOrient(), "120");
}

TEST_F(LookAntView, ACutAndItsUndoReachTheModel) {
  look_->control().txtDesc.setText("Sector panel");
  enter("txtDesc");
  box("txtDesc").setSelection(6, 6);
  QTest::keyClick(&box("txtDesc"), Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(look_->control().txtDesc.text(), "Sector");
  QTest::keyClick(&box("txtDesc"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(look_->control().txtDesc.text(), "Sector panel");
}

TEST_F(LookAntView, ATextThatTheModelSetsWhileTheUserTypesIsShownAndEndsThere) {
  TextBox& model = look_->control().txtDesc;
  model.change.listen([&model] {
    if (model.text() == "ab") model.setText("AB!");
  });
  enter("txtDesc");
  QTest::keyClicks(&box("txtDesc"), "ab");
  EXPECT_EQ(box("txtDesc").text(), "AB!");
  EXPECT_EQ(model.text(), "AB!");
}

TEST_F(LookAntView, AnotherUnitConvertsTheGain) {
  enter("txtGain");
  QTest::keyClicks(&box("txtGain"), "10");
  choose("cboUnit", 1);
  EXPECT_EQ(look_->sValueUnit(), "dBi");
  EXPECT_EQ(box("txtGain").text(), "12.15");
}

TEST_F(LookAntView, LockedBoxesAreReadOnlyAndLockedListsKeepTheirEntry) {
  look_->sValuePol("Vertical");
  look_->setProperty("Locked", true);
  enter("txtDesc");
  QTest::keyClicks(&box("txtDesc"), "new");
  choose("cboPol", 1);
  EXPECT_TRUE(box("txtDesc").isReadOnly());
  EXPECT_EQ(box("txtDesc").text(), "");
  EXPECT_EQ(list("cboPol").currentText(), "Vertical");
  EXPECT_EQ(look_->sValuePol(), "Vertical");
  EXPECT_FALSE(look_->findChild<QCheckBox*>("chkInvert")->isEnabled());
}

TEST_F(LookAntView, ClearAsksAndObeysTheAnswer) {
  look_->sValueDesc("Panel");
  desktop_.answers = {MsgAnswer::cancel, MsgAnswer::ok};
  auto* clear = look_->findChild<QPushButton*>("cmdClear");
  QTest::mouseClick(clear, Qt::LeftButton);
  EXPECT_EQ(box("txtDesc").text(), "Panel");
  QTest::mouseClick(clear, Qt::LeftButton);
  EXPECT_EQ(box("txtDesc").text(), "");
  EXPECT_FALSE(box("txtOrient").isEnabled());
  ASSERT_EQ(desktop_.shown().size(), 2U);
  EXPECT_EQ(desktop_.shown()[0].message.title, "Remove Pattern");
}

TEST_F(LookAntView, ThePreviewLabelWorksByMouseAndKeyAndTheHeightFollows) {
  QSignalSpy sizes(look_.get(), &LookAnt::ChangeSize);
  auto* label = look_->findChild<QLabel*>("lblPreview");
  const int tall = look_->sizeHint().height();
  QTest::mouseClick(label, Qt::LeftButton);
  const int low = look_->sizeHint().height();
  EXPECT_LT(low, tall);
  EXPECT_EQ(label->text(), "Show preview");
  label->setFocus(Qt::TabFocusReason);
  QTest::keyClick(label, Qt::Key_Space);
  EXPECT_EQ(look_->sizeHint().height(), tall);
  EXPECT_EQ(sizes.count(), 2);
}

TEST_F(LookAntView, TheWidthOfTheWidgetIsTheControls) {
  const int least = look_->minimumSizeHint().width();
  look_->resize(least + 150, look_->height());
  EXPECT_EQ(look_->control().width(), (least + 150) * 1440 / look_->logicalDpiX());
  const auto& desc = look_->control().txtDesc.geometry();
  EXPECT_EQ(box("txtDesc").geometry().right() + 1, desc.right() * look_->logicalDpiX() / 1440);
}

TEST_F(LookAntView, TabRunsThroughTheValuesInTheControlsOrder) {
  const QStringList order = {"txtDesc",  "txtGain",  "cboUnit",  "cmdClear",  "cmdLook", "txtOrient",
                             "txtETilt", "txtMTilt", "txtMAzim", "chkInvert", "cboPol",  "lblPreview"};
  enter("txtDesc");
  for (const QString& name : order) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), name);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
}

TEST_F(LookAntView, WhatAnInputMethodCommitsPassesTheKeyFilter) {
  look_->sValueOrient("12");
  enter("txtOrient");
  box("txtOrient").end(false);
  QInputMethodEvent commit;
  commit.setCommitString(
      QString::fromUtf8("3\xE5\x8C\x97"
                        "4"));
  QApplication::sendEvent(&box("txtOrient"), &commit);
  EXPECT_EQ(box("txtOrient").text(), "1234");
  EXPECT_EQ(look_->sValueOrient(), "1234");
  QInputMethodEvent words;
  words.setCommitString(QString::fromUtf8("D\xC3\xBCnn"));
  enter("txtDesc");
  QApplication::sendEvent(&box("txtDesc"), &words);
  EXPECT_EQ(look_->sValueDesc(), "D\xC3\xBCnn");
  EXPECT_TRUE(look_->control().bDirty());
}

TEST_F(LookAntView, ADroppedTextPassesTheKeyFilter) {
  look_->sValueOrient("");
  QMimeData dragged;
  dragged.setText("north 7.5 deg");
  QLineEdit& orient = box("txtOrient");
  const QPoint at = orient.rect().center();
  QDragEnterEvent enters(at, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&orient, &enters);
  QDropEvent drop(at, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&orient, &drop);
  EXPECT_EQ(orient.text(), "7.5");
  EXPECT_EQ(look_->sValueOrient(), "7.5");
}

TEST_F(LookAntView, NothingCanBeDroppedOnALockedBox) {
  look_->Locked(true);
  QMimeData dragged;
  dragged.setText("7.5");
  QDragEnterEvent enters({5, 5}, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
  enters.ignore();
  QApplication::sendEvent(&box("txtOrient"), &enters);
  EXPECT_FALSE(enters.isAccepted());
  QInputMethodEvent commit;
  commit.setCommitString("8");
  QApplication::sendEvent(&box("txtOrient"), &commit);
  EXPECT_EQ(box("txtOrient").text(), "");
}

TEST_F(LookAntView, AButtonIsUpAgainWhenAMessageTookTheReleaseOfItsClick) {
  auto* clear = look_->findChild<QPushButton*>("cmdClear");
  QWindow* window = look_->windowHandle();
  const QPoint at = clear->mapTo(look_.get(), clear->rect().center());
  enter("txtETilt");
  QTest::keyClicks(&box("txtETilt"), "200");
  desktop_.policy = [&](const Message& message) {
    QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(1, 1));
    return defaultAnswer(message);
  };
  QTest::mousePress(window, Qt::LeftButton, {}, at);
  QApplication::processEvents();
  ASSERT_EQ(desktop_.shown().size(), 1U);
  EXPECT_EQ(desktop_.shown()[0].message.title, "Inverted Antenna?");
  EXPECT_EQ(box("txtETilt").text(), "");
  EXPECT_TRUE(clear->hasFocus());
  EXPECT_FALSE(clear->isDown());
}

// A record in an INI file, bound as a host binds it.
TEST_F(LookAntView, TheRecordIsFilledAndSavedThroughTheWidgetsOwnMembers) {
  suite_.folder().write("SITE.INI", "[Facility Data]\r\nTX_A1TYP=Whip\r\nTX_A1GAIN=3\r\nTX_A1GNUN=dBd\r\n");
  look_->control().HookINI()->iniFile(suite_.file("SITE.INI"));
  look_->control().HookINI()->INISection("Facility Data");
  ASSERT_TRUE(QMetaObject::invokeMethod(look_.get(), "UpdateINI"));
  EXPECT_EQ(box("txtDesc").text(), "Whip");
  EXPECT_EQ(box("txtGain").text(), "3.00");
  enter("txtGain");
  QTest::keyClicks(&box("txtGain"), "4.5");
  QString errors = "not called";
  ASSERT_TRUE(QMetaObject::invokeMethod(look_.get(), "Save", Q_RETURN_ARG(QString, errors)));
  EXPECT_EQ(errors, "");
  EXPECT_NE(suite_.folder().read("SITE.INI").find("TX_A1GAIN=4.5"), std::string::npos);
}

class LookAntTableView : public LookAntView {
 protected:
  // Binds all values to the fields of FACILITY.DBF, which has one row.
  LookAntTableView() {
    const DatabasePtr folder = DBEngine::OpenDatabase(suite_.path());
    TableDef table = folder->CreateTableDef("FACILITY");
    for (const char* field : {"TX_A1FNM", "TX_A1TID", "TX_A1TYP", "TX_A1GAIN", "TX_A1GNUN", "TX_A1ORIEN", "TX_A1ETILT",
                              "TX_A1MTILT", "TX_A1MDIR", "TX_A1INVRT", "TX_A1POL", "TX_FREQMHZ"}) {
      table.append(field, field == std::string("TX_A1INVRT") ? FieldType::boolean : FieldType::text, 20);
    }
    folder->append(table);
    const RecordsetPtr row = folder->OpenRecordset("Select * From [FACILITY]");
    row->AddNew();
    row->put("TX_A1TYP", "Whip");
    row->Update();
    look_->control().TestInit();
  }
  std::string description() {
    return DBEngine::OpenDatabase(suite_.path())
        ->OpenRecordset("Select * From [FACILITY]")
        ->value("TX_A1TYP")
        .asText()
        .substr(0, 4);
  }
};

TEST_F(LookAntTableView, AValueIsReachedByItsField) {
  look_->Update();
  EXPECT_EQ(look_->sHookDBFValue("tx_a1typ"), "Whip");
  look_->sHookDBFValue("TX_A1TYP", "Dish");
  EXPECT_EQ(box("txtDesc").text(), "Dish");
  EXPECT_EQ(look_->Save(), "");
  EXPECT_EQ(description(), "Dish");
  look_->UpdateDBF();
  EXPECT_EQ(look_->sHookDBFValue("TX_A1TYP"), "Dish");
  look_->DisconnectDBF();
  EXPECT_EQ(look_->sHookDBFValue("TX_A1TYP"), "");
}

TEST_F(LookAntTableView, WithTheEditMarkTheHostBeginsTheEdit) {
  look_->Update();
  const auto refused = [this] { return look_->Save().contains("Error: 3020 "); };
  EXPECT_FALSE(refused());
  look_->Edit();
  EXPECT_TRUE(refused());
  look_->EditUpdate();
  EXPECT_FALSE(refused());
  look_->Edit();
  look_->CancelEdit();
  EXPECT_FALSE(refused());
  EXPECT_TRUE(look_->bEdit());
  EXPECT_TRUE(refused());
}

TEST_F(LookAntView, AnEditWithoutARecordIsRefusedWithAReason) {
  QString reason;
  EXPECT_FALSE(look_->bEdit(true, &reason));
  EXPECT_TRUE(reason.startsWith("scLookAnt\r\n"));
  EXPECT_TRUE(desktop_.shown().empty());
  EXPECT_FALSE(look_->bEdit());
  EXPECT_EQ(desktop_.shown().size(), 1U);
}

TEST_F(LookAntView, ToolTipsAreTheModels) {
  const std::pair<const char*, const char*> tips[] = {
      {"txtFile", "Antenna Library"},
      {"txtID", "Antenna ID"},
      {"txtDesc", "Antenna Description"},
      {"txtGain", "Major Lobe Gain"},
      {"cboUnit", "Gain Units"},
      {"txtOrient", "Horizontal orientation"},
      {"txtETilt", "Electrical tilt (- for down)"},
      {"txtMTilt", "Mechanical tilt (- for down)"},
      {"txtMAzim", "Mechanical tilt azimuth"},
      {"chkInvert", "Inverted mounting"},
      {"cboPol", ""},
      {"cmdLook", "Lookup Antenna from Libraries"},
      {"cmdClear", "Clear antenna pattern"},
      {"lblPreview", "Click to show or hide pattern previews"},
      {"picHor", "Azimuth pattern preview"},
      {"picVer", "Elevation pattern preview"},
  };
  for (const auto& [name, tip] : tips) EXPECT_EQ(look_->findChild<QWidget*>(name)->toolTip(), tip) << name;
}

TEST_F(LookAntView, ThePreviewIsPaintedInTheColoursOfItsLines) {
  PictureBox& picture = look_->control().picHor;
  picture.setScale({-1, 1, 2, -2});
  picture.drawLine(-1, 0.5, 1, 0.5, color::blue);
  picture.drawLine(-1, -0.5, 1, -0.5, color::red);
  QWidget* view = look_->findChild<QWidget*>("picHor");
  const QImage image = view->grab().toImage();
  const auto bandHas = [&](double share, auto test) {
    const int middle = static_cast<int>(image.height() * share);
    for (int y = middle - 2; y <= middle + 2; ++y) {
      if (test(image.pixelColor(image.width() / 2, y))) return true;
    }
    return false;
  };
  EXPECT_TRUE(bandHas(0.25, [](const QColor& c) { return c.blue() > 200 && c.red() < 150; }));
  EXPECT_TRUE(bandHas(0.75, [](const QColor& c) { return c.red() > 200 && c.blue() < 150; }));
  EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), QColor(Qt::white));
}

TEST_F(LookAntView, TextStaysReadableOnEveryBackgroundOfADarkDesktop) {
  look_->setPalette(QPalette(QColor(60, 60, 64), QColor(40, 40, 44)));
  const auto readable = [this] {
    const QPalette colours = box("txtDesc").palette();
    return contrast(colours.color(QPalette::Text), colours.color(QPalette::Base)) >= 4.5;
  };
  EXPECT_TRUE(readable());
  look_->BackWhite(true);
  EXPECT_EQ(box("txtDesc").palette().color(QPalette::Base), QColor(Qt::white));
  EXPECT_TRUE(readable());
  look_->BackRed(true);
  EXPECT_EQ(box("txtDesc").palette().color(QPalette::Base), QColor(Qt::red));
  EXPECT_TRUE(readable());
  look_->BackLtGray(true);
  EXPECT_TRUE(readable());
}

}  // namespace
}  // namespace vantrelix::qt
