// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "tests/harness/random_desk.h"
#include "tests/harness/random_editor.h"
#include "tests/harness/sheet_scene.h"
#include "tests/support/fault_store.h"
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
  /// Always the same for the same seed.
  SheetPlayer(const std::string& object_class, unsigned seed, PlayedSheets& played);

  /// Opens a sheet, does so many things on it, and closes it.
  void Play(std::size_t steps);
  /// What was done, a line each.
  [[nodiscard]] const std::string& story() const { return story_; }

 private:
  /// Page and place of a field.
  using FieldKey = std::pair<std::size_t, std::size_t>;
  using Entries = MemoryStore::Entries;

  [[nodiscard]] std::size_t Roll(std::size_t sides) { return editor_.Roll(sides); }
  [[nodiscard]] session::TouchedFields& Touched(std::size_t page) {
    return scene_.guarded().Fields(page).touched;
  }
  [[nodiscard]] HeadlessDialog& Page(std::size_t page) { return *scene_.sheet().Dialog(page); }

  void Tell(const std::string& deed) { story_ += deed + "\n"; }
  void PlaceObjects();
  [[nodiscard]] ldap::AttributeValues AnyValues(const Attribute& attribute);
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
  [[nodiscard]] std::vector<FieldKey> TouchedFields();
  [[nodiscard]] std::map<std::string, std::string> TypedTexts(const std::vector<FieldKey>& fields);
  void ExpectNothingElse(const Entries& before, const std::set<std::string>& attributes,
                         const RandomDesk::Answers& answers);
  void ExpectStored(const std::map<std::string, std::string>& typed) const;

  PlayedSheets& played_;
  MemoryStore memory_;
  FaultStore store_{memory_};
  std::vector<std::string> names_;
  RandomDesk desk_;
  SheetScene scene_;
  RandomEditor editor_;
  std::map<FieldKey, std::string> shown_;
  std::set<FieldKey> handled_;
  /// Taken away by a command, or not written when it was to be.
  std::set<FieldKey> removed_;
  std::set<FieldKey> unwritten_;
  /// What was answered since then: what was taken out once stays out.
  RandomDesk::Answers answers_;
  std::string story_;
};

}  // namespace pelora::testing
