// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/harness/call_fault_store.h"
#include "tests/harness/random_desk.h"
#include "tests/harness/random_editor.h"
#include "tests/harness/sheet_scene.h"
#include "tests/harness/wanted_value.h"
#include "tests/support/memory_store.h"

namespace pelora::testing {

/// What was played, so that nobody takes sheets that nothing was done on for a trial.
struct PlayedSheets {
  std::size_t sheets = 0;
  std::size_t of_several = 0;
  std::size_t edits = 0;
  std::size_t set_back = 0;
  std::size_t removed = 0;
  std::size_t held = 0;
  std::size_t applied = 0;
  std::size_t not_applied = 0;
  std::size_t cancelled = 0;
  std::size_t taken_out = 0;
  std::size_t theirs_kept = 0;
  /// Values of attributes that were written.
  std::size_t written = 0;
  /// Values that were to be there and are.
  std::size_t found_stored = 0;
  /// Sheets of which a fault kept something.
  std::size_t not_opened = 0;
};

/// Somebody without a plan before sheets of a few objects of one class, as the console has them,
/// while somebody else changes the same objects and the directory says no now and then. After
/// everything that may write, and after everything that must not, the whole directory is compared:
/// what nobody has touched is never another.
///
/// What was touched is known here from the controls and from what was done to them, not from the
/// sheet's own accounts.
class SheetPlayer {
 public:
  /// `contents` say what the objects hold, `dice` everything else. Always the same for the same
  /// dice.
  SheetPlayer(const std::string& object_class, const Dice& contents, const Dice& dice,
              PlayedSheets& played);

  /// Opens a sheet, does things on it as long as `goes_on` says so and all is well, and closes it.
  void Play(const std::function<bool()>& goes_on);
  /// What was done, a line each.
  [[nodiscard]] const std::string& story() const { return story_; }

 private:
  /// Page and place of a field.
  using FieldKey = std::pair<std::size_t, std::size_t>;
  using Entries = MemoryStore::Entries;
  /// What stands in the fields.
  using Shown = std::map<FieldKey, std::string>;

  [[nodiscard]] std::size_t Roll(std::size_t sides) { return dice_(sides); }
  [[nodiscard]] session::TouchedFields& Touched(std::size_t page) {
    return scene_.guarded().Fields(page).touched;
  }
  [[nodiscard]] HeadlessDialog& Page(std::size_t page) { return *scene_.sheet().Dialog(page); }

  void Tell(const std::string& deed) { story_ += deed + "\n"; }
  /// Tells which request was made to fail, if any was.
  void TellFault();
  /// One of the next requests fails, whatever it is.
  void Arm();
  void Disarm() { store_.Fail(0, {}); }
  /// Opens a sheet, of which a fault may keep something.
  void Open();
  void Step();
  void Turn(std::size_t page);
  void EditSomething();
  void SetBackSomething();
  void RemoveSomething();
  /// Somebody else changes something.
  void Meddle();
  void Apply(bool is_ok);
  void Cancel();
  /// Whether something wrong keeps the sheet from being applied.
  [[nodiscard]] bool IsHeld();

  /// What the controls show counts as what nobody has touched. A row of a list view that was chosen
  /// to be so for several objects stays chosen as long as the sheet is open: those of them that
  /// were taken out come again with the tab's next change.
  void Begin(bool is_opened_anew);
  /// Takes down what a page shows.
  void Look(std::size_t page, Shown& shown);
  [[nodiscard]] Shown LookAtAll();
  /// A page has filled itself: what it shows counts as what nobody has touched, but for what is
  /// there still as it was wanted.
  void Forget(std::size_t page, const Shown& wanted);
  [[nodiscard]] std::vector<FieldKey> TouchedFields();
  /// Whether somebody else may have put another value in the place of one that was not sent.
  [[nodiscard]] bool IsMeddledWith(const WantedValue& wanted) const;
  /// What the touched fields say is to be stored.
  [[nodiscard]] std::vector<WantedValue> WantedValues(const std::vector<FieldKey>& fields);
  void ExpectNothingElse(const Entries& before, const std::set<std::string>& attributes,
                         const RandomDesk::Answers& answers);
  void ExpectStored(const std::vector<WantedValue>& values);

  PlayedSheets& played_;
  MemoryStore memory_;
  CallFaultStore store_{memory_};
  Dice dice_;
  std::vector<std::string> names_;
  RandomDesk desk_;
  SheetScene scene_;
  RandomEditor editor_;
  Shown shown_;
  std::set<FieldKey> handled_;
  /// Taken away by a command, or not written when it was to be.
  std::set<FieldKey> removed_;
  std::set<FieldKey> unwritten_;
  /// Attributes that somebody else has changed since the sheet was opened.
  std::set<std::string> meddled_;
  /// What was answered since then: what was taken out once stays out.
  RandomDesk::Answers answers_;
  std::string story_;
};

}  // namespace pelora::testing
