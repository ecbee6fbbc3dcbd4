#include "qt/menus.h"

#include <QPointer>

#include "qt/failures.h"
#include "qt/qtText.h"

namespace vantrelix::qt {

namespace {

void addItems(QWidget& to, const std::vector<MenuItem*>& items, bool onBar) {
  for (MenuItem* item : items) {
    auto* action = new ItemAction(*item, onBar, &to);
    if (const Menu* submenu = item->submenu()) {
      auto* opened = new QMenu(&to);
      fillMenu(*opened, *submenu);
      action->setMenu(opened);
    }
    to.addAction(action);
  }
}

}  // namespace

ItemAction::ItemAction(MenuItem& item, bool onBar, QObject* parent)
    : QAction(parent),
      onBar_(onBar),
      link_(
          item, [this] { follow(); }, [this] { setEnabled(false); }) {
  setObjectName(toQt(item.name()));
  follow();
}

// An item that has been checked once keeps its room for the mark.
void ItemAction::follow() {
  const MenuItem* item = link_.get();
  if (!item) return;
  setSeparator(item->caption() == "-");
  const QString caption = toQt(item->caption());
  setText(onBar_ && !caption.contains('&') ? '&' + caption : caption);
  setToolTip(toQt(item->toolTip()));
  setCheckable(isCheckable() || item->checked());
  setChecked(item->checked());
  setEnabled(item->enabled());
  setVisible(item->visible());
}

// The toolkit turns the check of what is chosen; the item alone says whether it is checked.
void ItemAction::click() {
  const QPointer<ItemAction> self(this);
  if (MenuItem* item = link_.get()) runGuarded([item] { item->userClick(); });
  if (self) follow();
}

void fillMenu(QMenu& menu, const Menu& model) { addItems(menu, model.items(), false); }

QMenuBar* makeMenuBar(const std::vector<MenuItem*>& items, QWidget* parent) {
  auto* bar = new QMenuBar(parent);
  addItems(*bar, items, true);
  QObject::connect(bar, &QMenuBar::triggered, bar, [](QAction* action) {
    if (auto* chosen = dynamic_cast<ItemAction*>(action)) chosen->click();
  });
  return bar;
}

}  // namespace vantrelix::qt
