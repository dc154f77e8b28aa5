// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>
#include <QSet>
#include <memory>
#include <optional>
#include <span>

#include "hosts/console/choosers/qt_choosers.h"
#include "hosts/console/console_platform.h"
#include "hosts/console/container_listing.h"
#include "hosts/console/container_tree_model.h"
#include "hosts/console/make_property_sheet.h"
#include "hosts/console/message_box.h"
#include "hosts/console/object_list_pane.h"
#include "hosts/console/session_opening.h"
#include "hosts/console/sheet_windows.h"
#include "hosts/session/directory_session.h"
#include "hosts/session/new_object_kind.h"

class QAction;
class QLabel;
class QMenu;
class QTreeView;

namespace pelora::console {

/// The console's window: the containers of a directory on the left, the objects of the chosen one
/// on the right, and the way from a selection to its properties.
class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  /// `module` holds the dialog templates and outlives the window.
  explicit MainWindow(const resources::ResourceFile& module);
  ~MainWindow() override;

  /// Shows a directory in place of the one shown before. Open property sheets are closed first;
  /// false when the administrator keeps one, and everything stays as it was.
  bool SetSession(std::unique_ptr<session::DirectorySession> session);
  /// Opens a directory file; a failure is shown and changes nothing.
  bool OpenFile(const QString& path);
  /// Opens a directory beside the window and shows it then, as `SetSession` does; `on_shown` is
  /// called afterwards. A failure is shown and changes nothing. An opening under way is given up.
  void OpenBesides(const QString& name, SessionOpening::Open open,
                   std::function<void()> on_shown = {});

  /// Connects to a domain controller, as `OpenBesides` does; without a name, to one of the
  /// domain's.
  void OpenServerBesides(const QString& server, std::function<void()> on_shown = {});

  /// Opens the property sheet of objects, or brings it to the front; a failure is shown.
  void ShowProperties(std::span<const session::DirectoryObject> selection);
  /// Makes an object in the container that is shown, in a wizard that is waited for; a failure is
  /// shown.
  void MakeNewObject(const session::NewObjectKind& kind);
  /// What an action on objects concerns now: the objects selected in the list or, when the tree was
  /// used last or nothing is selected there, the container.
  [[nodiscard]] std::vector<session::DirectoryObject> Selection() const;
  [[nodiscard]] const SheetWindows& sheets() const { return sheets_; }
  /// The directory shown; null when there is none.
  [[nodiscard]] const session::DirectorySession* session() const { return session_.get(); }
  /// Whether something is being read beside the window.
  [[nodiscard]] bool IsReading() const;
  /// Shows a failure as soon as the program waits for events again; one that is being shown already
  /// is not shown twice.
  void ReportLater(const QString& text, const QString& reason);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void MakePanes();
  void MakeActions();
  void MakeMenus();
  void MakeNewMenu();
  void ShowNewObject(const session::NewObjectKind& kind, const std::string& dn);
  void ShowContainer();
  void RefreshAll();
  /// Goes down from `container` by the names of containers, each below the one before.
  void FollowPath(const QModelIndex& container, std::vector<std::string> path);
  void ShowAdvanced(bool advanced);
  void StopReading();
  void StopOpening();
  [[nodiscard]] bool IsOpening() const;
  void FinishOpening(session::SessionResult result, const std::function<void()>& on_shown);
  void OpenSelection();
  void GoToParent();
  void UpdateActions();
  [[nodiscard]] QString CountText(std::size_t selected) const;
  void AskForFile();
  void AskForServer();
  void ShowAbout();

  const resources::ResourceFile& module_;
  QtMessageBox message_box_;
  std::unique_ptr<session::DirectorySession> session_;
  std::optional<QtChoosers> choosers_;
  std::optional<ConsolePlatform> platform_;
  /// One for the tree and one for the list: neither waits for the other.
  std::unique_ptr<DirectoryReader> tree_reader_;
  std::unique_ptr<DirectoryReader> list_reader_;
  std::unique_ptr<ContainerTreeModel> tree_model_;
  std::optional<ContainerListing> listing_;
  SheetWindows sheets_;

  QTreeView* tree_ = nullptr;
  ObjectListPane* list_ = nullptr;
  /// The last is the one that counts; others have been stopped and run out.
  std::vector<std::unique_ptr<SessionOpening>> openings_;
  QString opened_name_;
  /// An object is being made; the session has to stay.
  bool is_creating_ = false;
  /// A directory that was opened meanwhile, and what follows its showing.
  std::function<void()> show_opened_;
  /// Failures that are being shown.
  QSet<QString> reports_;
  QLabel* count_ = nullptr;
  QLabel* hint_ = nullptr;
  bool tree_used_last_ = false;
  QAction* open_file_ = nullptr;
  QAction* connect_ = nullptr;
  QAction* quit_ = nullptr;
  QAction* open_container_ = nullptr;
  QMenu* new_menu_ = nullptr;
  /// Where the last refresh leads.
  std::vector<std::string> refreshed_path_;
  /// An object that is to be selected when the list has been read; empty: none.
  std::string select_when_read_;
  QAction* properties_ = nullptr;
  QAction* refresh_ = nullptr;
  QAction* stop_ = nullptr;
  QAction* advanced_ = nullptr;
  QAction* parent_ = nullptr;
  QAction* find_ = nullptr;
  QAction* about_ = nullptr;
};

}  // namespace pelora::console
