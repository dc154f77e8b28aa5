// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <QObject>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "hosts/console/errands/qt_errands.h"
#include "hosts/ldap/store_opener.h"
#include "hosts/session/change_history.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/life/place_plan.h"
#include "hosts/session/life/place_words.h"
#include "hosts/session/write_failure.h"
#include "hosts/session/writing_desk.h"

class QAction;

namespace pelora::console {

class DirectoryPane;

/// The directory that is shown, as far as objects get another place in it. Nothing is null.
struct PlaceContext {
  ldap::IDirectoryStore* store;
  session::ChangeHistory* history;
  session::FieldCatalogue* fields;
  ldap::StoreOpener open_another;
};

/// Renaming, moving and deleting what is selected in the main window: what it would break is said
/// before, what became of it after, and it can be taken back where the directory lets it.
class PlaceActions final : public QObject {
  Q_OBJECT

 public:
  /// `context` is asked whenever something is done; nothing: no directory is open. All of it
  /// outlives the actions.
  PlaceActions(DirectoryPane& pane, QtErrands& errands, session::IWritingDesk& desk,
               std::function<std::optional<PlaceContext>()> context);

  /// Rename, Move, Delete: for menus.
  [[nodiscard]] QList<QAction*> actions() const { return {rename_, move_, delete_}; }
  /// What is selected is another selection.
  void Update();

  /// Moves objects to a container, after a question.
  void MoveTo(const std::vector<std::string>& dns, const std::string& container);

  /// Asked before anything is written of these objects and of what lies below them; false: it is
  /// not. May be none.
  std::function<bool(const std::vector<std::string>& dns)> may_change;
  /// What is done is told in one line.
  std::function<void(const QString& text)> on_done;
  /// What was written cannot be taken back, for nothing of it could be kept, and why.
  std::function<void(const QString& reason)> on_lost;
  /// The directory cannot be read, and why.
  std::function<void(const QString& text, const QString& reason)> on_failure;

 private:
  using Plan = std::function<ldap::StoreStatus(
      ldap::IDirectoryStore& store, const std::vector<session::ReferringAttribute>& attributes,
      session::PlacePlan& plan)>;

  [[nodiscard]] QAction* Make(const char* text, const char* tip, const QKeySequence& key);
  void Rename();
  void Move();
  void Delete();
  /// Reads what there is to know beside the window; nothing when that was stopped or failed.
  [[nodiscard]] std::optional<session::PlacePlan> Read(const PlaceContext& context,
                                                       const Plan& plan);
  [[nodiscard]] bool Ask(const session::PlaceQuestion& question);
  /// Writes the plan and tells what became of it. `done` is what was to be: "renamed".
  void Write(const PlaceContext& context, session::PlacePlan plan, const std::string& done);
  void Tell(const session::PlacePlan& plan, const std::vector<changes::Result>& results,
            session::DirectoryPlace place, const std::string& done, bool& tries_again);
  void ShowWhatIsThere(const session::PlacePlan& plan);

  DirectoryPane& pane_;
  QtErrands& errands_;
  session::IWritingDesk& desk_;
  std::function<std::optional<PlaceContext>()> context_;
  QAction* rename_ = nullptr;
  QAction* move_ = nullptr;
  QAction* delete_ = nullptr;
};

}  // namespace pelora::console
