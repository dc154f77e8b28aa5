// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMainWindow>
#include <QSet>
#include <memory>
#include <span>
#include <utility>

#include "hosts/console/attributes/attribute_dialog.h"
#include "hosts/console/dialogs/message_box.h"
#include "hosts/console/errands/qt_errands.h"
#include "hosts/console/life/place_actions.h"
#include "hosts/console/new_object/new_object_wizard.h"
#include "hosts/console/sheets/make_property_sheet.h"
#include "hosts/console/sheets/sheet_windows.h"
#include "hosts/console/window/directory_openings.h"
#include "hosts/console/window/directory_pane.h"
#include "hosts/console/window/shown_directory.h"
#include "hosts/console/writing/history_desk.h"
#include "hosts/console/writing/qt_writing_desk.h"
#include "hosts/session/new_object_kind.h"

class QAction;
class QMenu;

namespace pelora::console {

class NameLabel;

/// The console's window: the containers of a directory on the left, the objects of the chosen one
/// on the right, and the way from a selection to its properties.
class MainWindow final : public QMainWindow {
  Q_OBJECT

 public:
  /// `module` holds the dialog templates and outlives the window.
  explicit MainWindow(const resources::ResourceFile& module);
  ~MainWindow() override;

  /// Shows a directory in place of the one shown before. Open property sheets are closed first, and
  /// ask about their edits before; false when the administrator keeps one, or waits for something
  /// that works with the directory, and everything stays as it was.
  bool SetSession(std::unique_ptr<session::DirectorySession> session);
  /// Opens a directory file; a failure is shown and changes nothing.
  bool OpenFile(const QString& path);
  /// Opens a directory beside the window and shows it then, as `SetSession` does; `on_shown` is
  /// called afterwards. A failure is shown and changes nothing. An opening under way is given up.
  /// As long as anything modal runs, which works with the directory that is shown, that one stays.
  void OpenBesides(const QString& name, SessionOpening::Open open,
                   std::function<void()> on_shown = {});

  /// Connects to a domain controller, as `OpenBesides` does; without a name, to one of the
  /// domain's, and of the site first if one is given.
  void OpenServerBesides(const QString& server, std::function<void()> on_shown = {},
                         const QString& site = {});

  /// Opens the property sheet of objects, or brings it to the front; a failure is shown.
  /// With an attribute, the page with its field is shown.
  void ShowProperties(std::span<const session::DirectoryObject> selection,
                      const std::string& attribute = {});
  /// Makes an object in the container that is selected or shown, in a wizard that is waited for; a
  /// failure is shown.
  void MakeNewObject(const session::NewObjectKind& kind);
  /// The same, beside the object that is selected and after it.
  void MakeNewLikeThis();
  /// What an action on objects concerns now: the objects selected in the list or, when the tree was
  /// used last or nothing is selected there, the container.
  [[nodiscard]] std::vector<session::DirectoryObject> Selection() const {
    return pane_->Selection();
  }
  [[nodiscard]] const SheetWindows& sheets() const { return sheets_; }
  /// The directory shown; null when there is none.
  [[nodiscard]] const session::DirectorySession* session() const {
    return directory_ ? directory_->session.get() : nullptr;
  }
  /// The same directory for use on this thread: the window lives on while a server makes up its
  /// mind. Null when there is none.
  [[nodiscard]] ldap::IDirectoryStore* store() const {
    return directory_ ? &directory_->store : nullptr;
  }
  /// The tree, the list, and what is found.
  [[nodiscard]] DirectoryPane& pane() const { return *pane_; }
  /// Whether something is being read beside the window.
  [[nodiscard]] bool IsReading() const { return pane_->IsReading(); }
  /// Shows a failure as soon as the program waits for events again; one that is being shown already
  /// is not shown twice.
  void ReportLater(const QString& text, const QString& reason);

 protected:
  void closeEvent(QCloseEvent* event) override;
  /// A directory file that is dropped on the window is opened.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  /// Takes what an earlier window has left: its place, and the directory that it showed, which is
  /// offered and not opened.
  void Recall();
  void Remember();
  void OpenLast();
  /// The container that was shown last of the directory that is shown.
  [[nodiscard]] QString ContainerKey() const;
  void RememberContainer();
  void RecallContainer();
  void MakePane();
  void MakeActions();
  void MakeMenus();
  void MakePlaces();
  /// Shows what the directory has of the selected object.
  void ShowAttributes();
  /// Edits what was read of an object of the directory that is shown.
  [[nodiscard]] AttributeEditor EditorOf(std::shared_ptr<ldap::Entry> shown,
                                         std::shared_ptr<session::WritableAttributes> writable);
  /// The kind of the one object that is selected; null when none like it can be made.
  [[nodiscard]] const session::NewObjectKind* KindOfNewLike() const;
  void MakeNewObjectIn(const session::DirectoryObject& container,
                       const session::NewObjectKind& kind,
                       std::shared_ptr<const session::ModelObject> model);
  /// What names of new users follow in a container.
  [[nodiscard]] KeptPatterns PatternsAt(const session::DirectoryObject& container);
  void ShowNewObject(const session::NewObjectKind& kind, const std::string& container,
                     const std::string& dn);
  void StopReading();
  void ShowOpened(DirectoryOpenings::Opened opened);
  void OpenSelection();
  /// Shows the properties of what is selected, at the field that a rule's finding is about.
  void ShowSelection();
  /// Shows the properties of all users in the container that is selected or shown, and below it.
  void ShowUsersBelow();
  /// A sheet of a selection, not shown yet; none when it cannot be made, which has been told.
  [[nodiscard]] SheetResult MakeSheet(std::span<const session::DirectoryObject> selection,
                                      QWidget& parent, ShowObject show_object);
  /// The sheet of a selection, opened or brought to the front, at the field of an attribute if one
  /// is given; null when there is none, which has been told.
  QtPropertySheet* OpenSheet(std::span<const session::DirectoryObject> selection,
                             const std::string& attribute = {});
  /// What was written could not be kept, and why.
  void SayItIsForGood(const QString& reason);
  /// Something was written on a sheet.
  void OnApplied();
  /// Shows the properties as they are by now, at the same page.
  void OpenAnew(QtPropertySheet& sheet, const std::vector<session::DirectoryObject>& objects);
  /// Shows the settings of an object that was found from within another window.
  void ShowAnother(const session::DirectoryObject& object, QWidget& from);
  /// Runs commands on what is selected.
  void ChangeSelection();
  void UpdateActions();
  void AskForFile();
  void AskForServer();
  void ShowAbout();
  /// Says in the status line as whom one works and where.
  void ShowWho();
  /// Says with which directory the window works, and how.
  void ShowConnection();

  const resources::ResourceFile& module_;
  /// Those of sheets: with our own pages'.
  const resources::ResourceFile templates_;
  QtMessageBox message_box_;
  QtErrands errands_;
  QtWritingDesk desk_;
  /// None before the first is opened.
  std::unique_ptr<ShownDirectory> directory_;
  HistoryDesk history_desk_{*this, errands_};
  SheetWindows sheets_;

  DirectoryPane* pane_ = nullptr;
  /// Goes with the pane.
  PlaceActions* places_ = nullptr;
  DirectoryOpenings openings_{
      [this](DirectoryOpenings::Opened opened) { ShowOpened(std::move(opened)); }};
  /// The directory that an earlier window has shown.
  QString last_;
  /// Failures that are being shown.
  QSet<QString> reports_;
  NameLabel* count_ = nullptr;
  NameLabel* hint_ = nullptr;
  NameLabel* who_ = nullptr;
  QAction* open_file_ = nullptr;
  QAction* connect_ = nullptr;
  QAction* quit_ = nullptr;
  QAction* open_container_ = nullptr;
  QMenu* new_menu_ = nullptr;
  QAction* new_like_ = nullptr;
  QAction* properties_ = nullptr;
  QAction* users_below_ = nullptr;
  QAction* attributes_ = nullptr;
  QAction* commands_ = nullptr;
  QAction* refresh_ = nullptr;
  QAction* stop_ = nullptr;
  QAction* advanced_ = nullptr;
  QAction* parent_ = nullptr;
  QAction* undo_ = nullptr;
  QAction* redo_ = nullptr;
  QAction* past_ = nullptr;
  QAction* review_ = nullptr;
  QAction* find_ = nullptr;
  QAction* open_last_ = nullptr;
  QAction* filter_ = nullptr;
  QAction* connection_ = nullptr;
  QAction* about_ = nullptr;
};

}  // namespace pelora::console
