// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/writing/history_desk.h"

#include <QApplication>
#include <algorithm>
#include <vector>

#include "hosts/console/dialogs/qt_dialog.h"
#include "hosts/console/text/plain_text.h"
#include "hosts/console/text/qt_text.h"
#include "hosts/console/writing/history_dialog.h"
#include "hosts/console/writing/result_dialog.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/let_go.h"
#include "hosts/session/shown_failure.h"

namespace pelora::console {
namespace {

bool AreAllDone(const std::vector<changes::Result>& results) {
  return std::ranges::all_of(results,
                             [](const changes::Result& result) { return result.IsDone(); });
}

std::vector<session::WrittenChange> Told(const std::vector<changes::Result>& results,
                                         session::DirectoryPlace place,
                                         session::IErrands& errands) {
  const session::FieldBook book;
  std::vector<session::WrittenChange> told;
  for (const changes::Result& result : results) {
    errands.Breathe();
    told.push_back(
        {.name = result.dn.empty() ? "The changes" : session::OwnNameOf(result.dn),
         .result = result,
         .reason = result.IsDone() ? std::string() : session::ReasonOf(result, book, place)});
  }
  return told;
}

}  // namespace

void HistoryDesk::SetDirectory(session::ChangeHistory* history, ldap::IDirectoryStore* store) {
  history_ = history;
  store_ = store;
}

void HistoryDesk::TakeBack(const session::PastChange& past, bool again) {
  const auto run = [&] {
    return again ? history_->Redo(past.id, *store_, errands_)
                 : history_->Undo(past.id, *store_, errands_);
  };
  std::vector<changes::Result> results = run();
  while (!AreAllDone(results)) {
    std::vector<session::WrittenChange> told = Told(results, session::PlaceOf(*store_), errands_);
    const bool is_tried_again = [&] {
      ResultDialog dialog(told, QApplication::activeWindow());
      return RunModal(dialog) == QDialog::Accepted;
    }();
    session::LetGoOf(told, errands_);
    if (!is_tried_again) break;
    session::LetGoOf(results, errands_);
    results = run();
  }
  const QString what =
      QStringLiteral("%1 (%2)").arg(Enumerated(past.objects), Enumerated(past.fields));
  if (AreAllDone(results)) {
    on_told(
        (again ? QStringLiteral("Done again: %1") : QStringLiteral("Taken back: %1")).arg(what));
  }
  session::LetGoOf(results, errands_);
  on_written();
}

std::vector<session::PastChange> HistoryDesk::List() {
  std::vector<session::PastChange> past;
  // Thousands of names may be in the files.
  errands_.Run("Reading what was written...",
               [&](session::IErrand& /*errand*/) { past = history_->List(); });
  return past;
}

void HistoryDesk::UndoLast() {
  if (history_ == nullptr) return;
  const std::vector<session::PastChange> past = List();
  const auto last = std::ranges::find_if(
      past, [](const session::PastChange& change) { return !change.is_undone; });
  if (last != past.end() && last->is_final) {
    const QString what = Enumerated(last->objects);
    return on_told(QStringLiteral("What was written last cannot be taken back: %1 (%2)")
                       .arg(what, Enumerated(last->fields)));
  }
  if (last != past.end()) return TakeBack(*last, false);
  on_told(QStringLiteral("There is nothing to take back."));
}

void HistoryDesk::RedoLast() {
  if (history_ == nullptr) return;
  const std::vector<session::PastChange> past = List();
  // What was taken back last stands right above what was not.
  const auto end = std::ranges::find_if(
      past, [](const session::PastChange& change) { return !change.is_undone; });
  if (end != past.begin()) return TakeBack(*(end - 1), true);
  on_told(QStringLiteral("There is nothing to do again."));
}

void HistoryDesk::ShowList() {
  if (history_ == nullptr) return;
  HistoryDialog dialog([this] { return List(); }, &window_);
  dialog.on_undo = [this](const session::PastChange& past) { TakeBack(past, false); };
  dialog.on_redo = [this](const session::PastChange& past) { TakeBack(past, true); };
  RunModal(dialog);
}

}  // namespace pelora::console
