// SPDX-License-Identifier: Apache-2.0
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

#include "hosts/console/dialogs/on_screen.h"
#include "hosts/console/new_object/new_object_menu.h"
#include "hosts/console/window/main_window.h"
#include "hosts/console/window/object_icons.h"

namespace pelora::console {
namespace {

constexpr QSize kWantedSize(960, 640);

/// The theme's icon of a name, or one that every style has.
QIcon ThemeIcon(const char* name, QStyle::StandardPixmap fallback) {
  return QIcon::fromTheme(QString::fromLatin1(name), QApplication::style()->standardIcon(fallback));
}

}  // namespace

void MainWindow::MakePane() {
  pane_ = new DirectoryPane(this);
  setCentralWidget(pane_);
  ResizeToFit(*this, kWantedSize);
  connect(&pane_->list(), &ObjectListPane::Opened, this, &MainWindow::OpenSelection);
}

void MainWindow::MakeActions() {
  const auto make = [this](const QIcon& icon, const QString& text, const QString& tip,
                           const QList<QKeySequence>& keys, auto slot) {
    auto* action = new QAction(icon, text, this);
    action->setStatusTip(tip);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, slot);
    return action;
  };
  open_file_ =
      make(ThemeIcon("document-open", QStyle::SP_DialogOpenButton),
           QStringLiteral("&Open Directory File..."), QStringLiteral("Show another directory file"),
           {QKeySequence::Open}, [this] { AskForFile(); });
  connect_ = make(ThemeIcon("network-server", QStyle::SP_DriveNetIcon),
                  QStringLiteral("&Connect to Domain..."),
                  QStringLiteral("Show the domain of a domain controller"),
                  {QKeySequence(QStringLiteral("Ctrl+L"))}, [this] { AskForServer(); });
  open_last_ =
      make({}, QStringLiteral("Open &Again"),
           QStringLiteral("Show the directory that was shown last"), {}, [this] { OpenLast(); });
  quit_ = make(ThemeIcon("application-exit", QStyle::SP_DialogCloseButton), QStringLiteral("&Quit"),
               QStringLiteral("Close the console"), {QKeySequence(QStringLiteral("Ctrl+Q"))},
               [this] { close(); });
  open_container_ =
      make(ThemeIcon("folder-open", QStyle::SP_DirOpenIcon), QStringLiteral("&Open"),
           QStringLiteral("Show what the container holds"), {}, [this] { OpenSelection(); });
  new_like_ = make({}, QStringLiteral("New Li&ke This One..."),
                   QStringLiteral("Create an object with the settings of the selected one"), {},
                   [this] { MakeNewLikeThis(); });
  new_like_->setObjectName(QStringLiteral("new_like"));
  properties_ =
      make(ThemeIcon("document-properties", QStyle::SP_FileDialogDetailedView),
           QStringLiteral("&Properties"), {},
           {QKeySequence(QStringLiteral("Alt+Return")), QKeySequence(QStringLiteral("Alt+Enter"))},
           [this] { ShowSelection(); });
  users_below_ = make({}, QStringLiteral("Properties of &Users Below"),
                      QStringLiteral("Show the properties of all users in the container and below"),
                      {QKeySequence(QStringLiteral("Ctrl+Shift+Return")),
                       QKeySequence(QStringLiteral("Ctrl+Shift+Enter"))},
                      [this] { ShowUsersBelow(); });
  attributes_ = make({}, QStringLiteral("&Attributes..."),
                     QStringLiteral("Show every attribute of the object as the directory has it"),
                     {QKeySequence(QStringLiteral("Ctrl+Shift+A"))}, [this] { ShowAttributes(); });
  commands_ = make({}, QStringLiteral("Chan&ge Addresses and Names..."),
                   QStringLiteral("Add, replace and remove addresses, delegates and recipients of "
                                  "the selection"),
                   {}, [this] { ChangeSelection(); });
  commands_->setObjectName(QStringLiteral("change_selection"));
  refresh_ = make(ThemeIcon("view-refresh", QStyle::SP_BrowserReload), QStringLiteral("&Refresh"),
                  QStringLiteral("Read the directory again"),
                  {QKeySequence(Qt::Key_F5), QKeySequence(QStringLiteral("Ctrl+R"))},
                  [this] { pane_->Refresh(); });
  stop_ = make(ThemeIcon("process-stop", QStyle::SP_BrowserStop), QStringLiteral("&Stop"),
               QStringLiteral("Stop reading the container"),
               {QKeySequence(QStringLiteral("Ctrl+."))}, [this] { StopReading(); });
  advanced_ = make({}, QStringLiteral("&Advanced Objects"),
                   QStringLiteral("Show what the directory keeps for an advanced view, too"), {},
                   [this](bool checked) { pane_->ShowAdvanced(checked); });
  advanced_->setCheckable(true);
  parent_ = make(ThemeIcon("go-up", QStyle::SP_FileDialogToParent), QStringLiteral("&Up"),
                 QStringLiteral("Show the container above"),
                 {QKeySequence(QStringLiteral("Alt+Up"))}, [this] { pane_->GoToParent(); });
  undo_ =
      make(ThemeIcon("edit-undo", QStyle::SP_ArrowBack), QStringLiteral("&Undo Last Change"),
           QStringLiteral("Take back what was written last, unless somebody has changed it since"),
           {QKeySequence::Undo}, [this] { history_desk_.UndoLast(); });
  redo_ = make(ThemeIcon("edit-redo", QStyle::SP_ArrowForward), QStringLiteral("&Redo"),
               QStringLiteral("Do again what was taken back last"), {QKeySequence::Redo},
               [this] { history_desk_.RedoLast(); });
  past_ = make({}, QStringLiteral("&Changes..."),
               QStringLiteral("Show what was written within the last 30 days"), {},
               [this] { history_desk_.ShowList(); });
  review_ = make({}, QStringLiteral("Re&view Every Change"),
                 QStringLiteral("Show what will be written first, for a single object too"), {},
                 [this](bool checked) { desk_.reviews_everything = checked; });
  review_->setCheckable(true);
  find_ = make(ThemeIcon("edit-find", QStyle::SP_FileDialogContentsView), QStringLiteral("&Find"),
               QStringLiteral("Find objects by names, addresses, a pasted list"),
               {QKeySequence::Find}, [this] { pane_->Find(); });
  filter_ = make({}, QStringLiteral("Fi&lter"), QStringLiteral("Narrow the list to a text"),
                 {QKeySequence(QStringLiteral("Ctrl+Shift+F"))},
                 [this] { pane_->list().filter().setFocus(); });
  connection_ = make({}, QStringLiteral("&Connection..."),
                     QStringLiteral("Show which server is used, why, as whom and until when"), {},
                     [this] { ShowConnection(); });
  connection_->setObjectName(QStringLiteral("show_connection"));
  about_ = make(ThemeIcon("help-about", QStyle::SP_MessageBoxInformation),
                QStringLiteral("&About Pelora Console"),
                QStringLiteral("Show the console's version"), {}, [this] { ShowAbout(); });
  about_->setObjectName(QStringLiteral("show_about"));
}

void MainWindow::MakeMenus() {
  new_menu_ =
      MakeNewObjectMenu(*this, [this](const session::NewObjectKind& kind) { MakeNewObject(kind); });
  QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
  file->addActions({open_file_, connect_, open_last_, quit_});
  file->insertSeparator(quit_);
  QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
  edit->addActions({undo_, redo_, past_, review_});
  edit->insertSeparator(review_);
  QMenu* object = menuBar()->addMenu(QStringLiteral("&Object"));
  object->addMenu(new_menu_);
  object->addActions(
      {new_like_, open_container_, properties_, users_below_, attributes_, commands_});
  object->addSeparator();
  object->addActions(places_->actions());
  QMenu* view = menuBar()->addMenu(QStringLiteral("&View"));
  view->addActions({find_, filter_, refresh_, stop_, parent_, advanced_});
  view->addSeparator();
  view->addActions(pane_->view_actions().actions());
  QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
  help->addActions({connection_, about_});

  QToolBar* tools = addToolBar(QStringLiteral("Tools"));
  tools->setObjectName(QStringLiteral("tools"));
  tools->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  tools->addActions({find_, parent_, refresh_, stop_, new_menu_->menuAction(), properties_});
  if (auto* opener = qobject_cast<QToolButton*>(tools->widgetForAction(new_menu_->menuAction()))) {
    opener->setPopupMode(QToolButton::InstantPopup);
  }

  pane_->list().view().addActions(
      {new_menu_->menuAction(), new_like_, open_container_, properties_, commands_, refresh_});
  for (QTreeView* objects : {&pane_->list().view(), &pane_->tree()}) {
    objects->addActions(places_->actions());
    objects->addAction(attributes_);
  }
  pane_->list().view().setContextMenuPolicy(Qt::ActionsContextMenu);
  pane_->tree().addActions(
      {new_menu_->menuAction(), new_like_, properties_, users_below_, refresh_});
  pane_->tree().setContextMenuPolicy(Qt::ActionsContextMenu);
}

}  // namespace pelora::console
