// Menus of the models as the desktop shows them.
#include <gtest/gtest.h>
#include <memory>

#include <QApplication>
#include <QDialog>
#include <QLayout>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "qt/FormWindow.h"
#include "qt/QtDesktop.h"
#include "qt/menus.h"
#include "ui/ScriptedDesktop.h"

namespace vantrelix::qt {
namespace {

class Sized : public Form {
 public:
  Sized() : Form("frmSized") {
    add(box);
    add(button);
    addToMenuBar(view);
    view.setSubmenu(&viewMenu);
    for (MenuItem* item : {&large, &separator, &more}) viewMenu.addItem(*item);
    more.setSubmenu(&moreMenu);
    moreMenu.addItem(deep);
    large.setChecked(true);
    large.click.listen([this] { clicks += "large "; });
    deep.click.listen([this] { clicks += "deep "; });
  }

  Frame box{"box"};
  CommandButton button{"button"};
  MenuItem view{"view", "View"}, large{"large", "Large"}, separator{"separator", "-"}, more{"more", "More"},
      deep{"deep", "Deep"};
  Menu viewMenu{"viewMenu"}, moreMenu{"moreMenu"};
  std::string clicks;
};

class MenusTest : public testing::Test {
 protected:
  // The menu that is up; the user acts on it once it has come.
  template <class User>
  static void onMenu(User user) {
    QTimer::singleShot(20, qApp, [user] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      ASSERT_NE(menu, nullptr);
      user(*menu);
      if (QWidget* open = QApplication::activePopupWidget()) open->close();
    });
  }

  ScriptedDesktop screen;
  DesktopInUse inUse{screen};
  Sized form;
};

TEST_F(MenusTest, AFormWithoutItemsHasNoBar) {
  Form plain("frmPlain");
  const FormWindow window(plain);
  EXPECT_EQ(window.findChild<QMenuBar*>(), nullptr);
}

TEST_F(MenusTest, TheBarOpensSubmenusWithChecksAndSeparators) {
  const FormWindow window(form);
  const auto* bar = window.findChild<QMenuBar*>();
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(window.layout()->menuBar(), bar);
  ASSERT_EQ(bar->actions().size(), 1);
  EXPECT_EQ(bar->actions()[0]->text(), "&View");
  const auto items = bar->actions()[0]->menu()->actions();
  ASSERT_EQ(items.size(), 3);
  EXPECT_TRUE(items[0]->isChecked());
  EXPECT_TRUE(items[1]->isSeparator());
  EXPECT_FALSE(items[0]->isSeparator());
  ASSERT_NE(items[2]->menu(), nullptr);
  EXPECT_FALSE(items[2]->isCheckable());
  EXPECT_EQ(items[2]->menu()->actions()[0]->text(), "Deep");
}

TEST_F(MenusTest, ItemsOfTheBarFollowTheirModels) {
  const FormWindow window(form);
  const QAction* bar = window.findChild<QMenuBar*>()->actions()[0];
  const QAction* item = bar->menu()->actions()[0];
  form.large.setCaption("Huge");
  form.large.setChecked(false);
  form.large.setEnabled(false);
  EXPECT_EQ(item->text(), "Huge");
  EXPECT_FALSE(item->isChecked());
  EXPECT_FALSE(item->isEnabled());
  form.large.setVisible(false);
  EXPECT_FALSE(item->isVisible());
  form.view.setCaption("Vie&w");
  EXPECT_EQ(bar->text(), "Vie&w");
  form.view.setEnabled(false);
  EXPECT_FALSE(bar->isEnabled());
}

TEST_F(MenusTest, ChoosingClicksOnceAndTheModelAloneChecks) {
  const FormWindow window(form);
  QAction* item = window.findChild<QMenuBar*>()->actions()[0]->menu()->actions()[0];
  item->trigger();
  EXPECT_EQ(form.clicks, "large ");
  EXPECT_TRUE(item->isChecked());
  QAction* deep = window.findChild<QMenuBar*>()->actions()[0]->menu()->actions()[2]->menu()->actions()[0];
  deep->trigger();
  EXPECT_EQ(form.clicks, "large deep ");
}

TEST_F(MenusTest, AFailureOfAClickIsToldOnce) {
  form.deep.click.listen([] { throw RunTimeFailure(5, "Nothing deep."); });
  const FormWindow window(form);
  window.findChild<QMenuBar*>()->actions()[0]->menu()->actions()[2]->menu()->actions()[0]->trigger();
  EXPECT_EQ(screen.shown().size(), 1U);
}

TEST_F(MenusTest, APopupBelowAWidgetStandsThereWithItsFirstItemHighlighted) {
  form.button.setCaption("Menu");
  form.setVisible(true);
  FormWindow window(form);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  const auto* button = window.findChild<QPushButton*>("button");
  Menu menu("menu");
  MenuItem separator("s", "-"), gone("gone", "Gone"), greyed("greyed", "Greyed"), first("first", "First");
  gone.setVisible(false);
  greyed.setEnabled(false);
  for (MenuItem* item : {&separator, &gone, &greyed, &first}) menu.addItem(*item);
  int clicks = 0;
  first.click.listen([&clicks] { ++clicks; });
  onMenu([&](QMenu& shown) {
    EXPECT_EQ(shown.pos(), button->mapToGlobal(QPoint(0, button->height() - 1)));
    ASSERT_NE(shown.activeAction(), nullptr);
    EXPECT_EQ(shown.activeAction()->text(), "First");
    QTest::keyClick(&shown, Qt::Key_Return);
  });
  QtDesktop().popupMenu(menu, &form.button);
  EXPECT_EQ(clicks, 1);
}

TEST_F(MenusTest, APopupBelowAWidgetThatIsNotShownComesUpAtThePointer) {
  Menu menu("menu");
  MenuItem item("item", "Item");
  menu.addItem(item);
  bool up = false;
  onMenu([&](QMenu& shown) {
    up = true;
    EXPECT_EQ(shown.activeAction(), nullptr);
  });
  QtDesktop().popupMenu(menu, &form.button);
  EXPECT_TRUE(up);
}

TEST_F(MenusTest, APopupHasSubmenusAndChecks) {
  onMenu([&](QMenu& shown) {
    EXPECT_TRUE(shown.actions()[0]->isChecked());
    shown.setActiveAction(shown.actions()[2]);
    QTest::keyClick(&shown, Qt::Key_Right);
    auto* deeper = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(deeper, &shown);
    QTest::keyClick(deeper, Qt::Key_Return);
  });
  QtDesktop().popupMenu(form.viewMenu);
  EXPECT_EQ(form.clicks, "deep ");
}

TEST_F(MenusTest, APopupThatIsClosedClicksNothing) {
  onMenu([](QMenu& shown) { QTest::keyClick(&shown, Qt::Key_Escape); });
  QtDesktop().popupMenu(form.viewMenu);
  EXPECT_EQ(form.clicks, "");
}

}  // namespace
}  // namespace vantrelix::qt
