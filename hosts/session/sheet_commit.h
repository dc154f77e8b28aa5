// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/session/change_history.h"
#include "hosts/session/errands.h"
#include "hosts/session/field_book.h"
#include "hosts/session/writing_desk.h"
#include "platform/message_box.h"

namespace pelora::session {

/// A tab of a sheet as its commit sees it.
struct CommittedTab {
  changes::RecordingDirectory* recording = nullptr;
  /// Its page's place in the sheet.
  std::size_t page = 0;
  /// Its dialog; null while it was not shown.
  IDialog* dialog = nullptr;
};

/// What a commit works with. All of it outlives the commit.
struct CommitSurroundings {
  ldap::IDirectoryStore& store;
  IErrands& errands;
  /// Where failures are shown when there is no desk.
  IMessageBox& message_box;
  /// May be null.
  IWritingDesk* desk = nullptr;
  /// Where it is kept what was written, to be taken back. May be null.
  ChangeHistory* history = nullptr;
  const FieldBook& book;
  /// What an object is called.
  std::function<std::string(const std::string& dn)> name_of;
};

/// Brings what the tabs of a sheet have recorded into the directory: of each object what all of
/// them have in one change, unless they are about the same attribute.
///
/// At a desk the changes of several objects are looked at first; all of them are written, whatever
/// becomes of some; conflicts are asked about; and what became of them is shown, to be tried again.
/// Without a desk the first change that is not done ends it and is shown in a box. It counts as
/// known then: whoever commits once more means it.
///
/// What was not written stays recorded, but for conflicts in which the other's value was to stay,
/// and for what was taken out at the desk: that is not written until it is edited once more.
///
/// There may be thousands of objects: whatever goes over all of them lets the errands' face breathe
/// with each.
class SheetCommit {
 public:
  SheetCommit(CommitSurroundings surroundings, std::vector<CommittedTab> tabs)
      : surroundings_(std::move(surroundings)), tabs_(std::move(tabs)) {}

  /// Nothing when nothing is left to be written, otherwise a page of which something is.
  [[nodiscard]] std::optional<std::size_t> Run();
  /// Whether somebody else's value was left where the sheet shows another.
  [[nodiscard]] bool has_kept_theirs() const { return has_kept_theirs_; }
  /// Whether what was recorded of an object is in the directory now.
  [[nodiscard]] bool IsDone(const std::string& dn) const;
  /// Nobody asks any more what became of the objects.
  void LetGo();

 private:
  /// What is to be written of one object, and which tabs recorded what of it.
  struct Pending {
    struct Part {
      CommittedTab tab;
      changes::Change change;
    };

    changes::Change change;
    std::vector<Part> parts;

    [[nodiscard]] bool Takes(const changes::Change& other) const;
    void Take(const CommittedTab& tab, changes::Change other);
  };
  using Plan = std::vector<Pending>;
  using Results = std::vector<changes::Result>;
  /// Objects (`ldap::FoldCase`).
  using Keys = std::set<std::string>;
  /// What a commit is about, whatever becomes of it.
  struct Whole {
    std::vector<std::string> dns;
    IDialog* owner = nullptr;
  };

  /// What is recorded now; of these objects only, when any are given.
  [[nodiscard]] Plan MakePlan(const Keys* only = nullptr) const;
  [[nodiscard]] Whole WholeOf(const Plan& plan) const;
  [[nodiscard]] std::optional<std::size_t> PageLeft() const;

  [[nodiscard]] std::optional<std::size_t> RunAtOnce(const Plan& plan);
  [[nodiscard]] std::optional<std::size_t> RunAtDesk(Plan& plan);
  /// False: nothing is to be written. What was taken out is left out.
  [[nodiscard]] bool LookAt(Plan& plan);
  void TakeOut(Plan& plan, const Review& review);
  /// Sends the changes, and settles what became of them with the tabs.
  [[nodiscard]] Results Write(const Plan& plan, bool stops_at_first);
  /// What is written from now on is kept, in the words for this plan.
  void KeepAs(const Plan& plan);
  /// Asks about conflicts; the objects for which an answer was given.
  [[nodiscard]] Keys Resolve(const Plan& plan, const Results& results);
  [[nodiscard]] std::vector<ShownConflict> ConflictsOf(const Results& results) const;
  /// `decided` are the conflicts of this result, in their order.
  void Decide(const Pending& pending, const changes::Result& result,
              std::span<const ShownConflict> decided);
  /// Those of these objects of which nothing is left in a plan are as they are to be.
  void SettleDecided(const Keys& keys, const Plan& plan);
  /// Shows what is not done of what was written; the objects that are to be tried again.
  [[nodiscard]] Keys Tell(const Whole& whole, const Plan& plan, const Results& results);
  [[nodiscard]] Keys TellAll(const Whole& whole);

  CommitSurroundings surroundings_;
  std::vector<CommittedTab> tabs_;
  /// What became of each object so far, by its name.
  std::map<std::string, changes::Result> ended_;
  /// In which words it is kept what is written: objects and fields; none once it has begun.
  struct Words {
    std::vector<std::string> objects;
    std::vector<std::string> fields;
  };
  std::optional<Words> words_;
  std::unique_ptr<changes::IChangeLog> log_;
  /// Whether conflicts were left open: they have been seen, and need no box.
  bool is_left_open_ = false;
  bool has_kept_theirs_ = false;
};

}  // namespace pelora::session
