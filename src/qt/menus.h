// Menus of the models: the popup menu of a widget, the bar of a form.
#pragma once

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "qt/ModelLink.h"
#include "ui/widgets.h"

namespace vantrelix::qt {

// The action of an item, which it follows: its caption ("-" makes it a separator), check, visibility, and whether it
// can be used. What chooses it calls `click`.
class ItemAction : public QAction {
  Q_OBJECT

 public:
  // `onBar`: the caption's first letter is underlined, unless it names another with "&".
  ItemAction(MenuItem& item, bool onBar, QObject* parent);

  // Runs the item's click. Where that ends the action, nothing more is done.
  void click();

 private:
  void follow();

  bool onBar_;
  ModelLink<MenuItem> link_;
};

// Puts the items of the model into the menu, submenus and all.
void fillMenu(QMenu& menu, const Menu& model);

// The bar of these items, each of which opens its submenu. What is chosen is clicked.
QMenuBar* makeMenuBar(const std::vector<MenuItem*>& items, QWidget* parent);

}  // namespace vantrelix::qt
