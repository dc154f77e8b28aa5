// SPDX-License-Identifier: Apache-2.0
// The way to new objects.
#include <QAction>
#include <QMenu>
#include <array>

#include "hosts/console/new_object/make_new_object_wizard.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/window/main_window.h"
#include "hosts/console/window/object_icons.h"

namespace pelora::console {

void MainWindow::MakeNewMenu() {
  new_menu_ = new QMenu(QStringLiteral("&New"), this);
  new_menu_->setObjectName(QStringLiteral("new_menu"));
  QAction* opener = new_menu_->menuAction();
  opener->setIcon(QIcon::fromTheme(QStringLiteral("document-new")));
  opener->setStatusTip(QStringLiteral("Create an object in the container"));
  for (const session::NewObjectKind& kind : session::NewObjectKinds()) {
    QAction* action = new_menu_->addAction(IconOf(kind.icon), ToQString(kind.menu_text));
    action->setStatusTip(
        QStringLiteral("Create an object of the type %1").arg(ToQString(TextOf(kind))));
    connect(action, &QAction::triggered, this, [this, &kind] { MakeNewObject(kind); });
  }
}

void MainWindow::MakeNewObject(const session::NewObjectKind& kind) {
  const session::DirectoryObject* container = pane_->Container();
  if (!session_ || container == nullptr) return;
  WizardResult made =
      MakeNewObjectWizard(kind, *container, {.store = *store_, .specifiers = session_->specifiers},
                          platform_->platform(), module_, this);
  if (!made.wizard) return ReportLater(QStringLiteral("There is no wizard."), made.error);
  const bool is_made = made.wizard->exec() == QDialog::Accepted;
  if (is_made) ShowNewObject(kind, made.wizard->created_name());
  made.wizard.reset();
  // A directory that was opened meanwhile need not wait any longer.
  ShowOpened();
}

void MainWindow::ShowNewObject(const session::NewObjectKind& kind, const std::string& dn) {
  pane_->SelectWhenRead(dn);
  // A container stands in the tree as well.
  const std::array classes = {std::string(kind.class_name)};
  session::KindOf(classes).is_container ? pane_->Refresh() : pane_->RefreshList();
}

}  // namespace pelora::console
