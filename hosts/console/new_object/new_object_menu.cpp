// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/new_object_menu.h"

#include <QAction>
#include <QMenu>
#include <QWidget>

#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/object_icons.h"

namespace pelora::console {

QMenu* MakeNewObjectMenu(QWidget& parent,
                         const std::function<void(const session::NewObjectKind& kind)>& make) {
  auto* const menu = new QMenu(QStringLiteral("&New"), &parent);
  menu->setObjectName(QStringLiteral("new_menu"));
  QAction* const opener = menu->menuAction();
  opener->setIcon(QIcon::fromTheme(QStringLiteral("document-new")));
  opener->setStatusTip(QStringLiteral("Create an object in the container"));
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    QAction* action = menu->addAction(IconOf(kind.icon), ToQString(kind.menu_text));
    action->setStatusTip(
        QStringLiteral("Create an object of the type %1").arg(ToQString(TextOf(kind))));
    QObject::connect(action, &QAction::triggered, &parent, [make, &kind] { make(kind); });
  }
  return menu;
}

}  // namespace pelora::console
