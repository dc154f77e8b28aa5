// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_user.h"
#include "platform/field_rows.h"
#include "tests/harness/dice.h"
#include "tests/support/fake_choosers.h"

namespace pelora::testing {

/// What somebody without a plan knows and dares.
struct RandomHabits {
  /// Paths of which the choosers give one; at least one.
  std::vector<std::string> chosen;
  /// Texts beside plain numbers that are typed where a number is asked for.
  std::vector<std::string> odd_numbers{};
  /// Takes the default entry out of a list, and its last one.
  bool empties_lists = false;
};

/// Somebody without a plan in front of a page: does to its fields whatever the dice say that the
/// page lets him do.
class RandomEditor {
 public:
  /// `dialogs` and `choosers` outlive it.
  RandomEditor(HeadlessModalDialogs& dialogs, FakeChoosers& choosers, RandomHabits habits,
               Dice dice)
      : dialogs_(dialogs),
        choosers_(choosers),
        habits_(std::move(habits)),
        dice_(std::move(dice)) {}

  /// A number below `sides`.
  [[nodiscard]] std::size_t Roll(std::size_t sides) { return dice_(sides); }

  /// Does something to a field; whether anything was done.
  bool Edit(HeadlessUser user, const FieldRow& row);

  /// The entries of lists that something was done to, or may have been done to, in the case in
  /// which they stood there.
  [[nodiscard]] const std::set<std::string>& handled() const { return handled_; }
  void ForgetHandled() { handled_.clear(); }

 private:
  bool Click(HeadlessUser& user, const FieldRow& row);
  bool Type(HeadlessUser& user, const FieldRow& row);
  bool Choose(HeadlessUser& user, const FieldRow& row);
  bool ChangeList(HeadlessUser& user, const FieldRow& row);
  bool AddText(HeadlessUser& user, const FieldRow& row);
  bool SelectChoice(HeadlessUser& user, const FieldRow& row);
  bool ClickChoice(HeadlessUser& user, const FieldRow& row);

  HeadlessModalDialogs& dialogs_;
  FakeChoosers& choosers_;
  RandomHabits habits_;
  Dice dice_;
  std::set<std::string> handled_;
  int next_address_ = 0;
};

/// The rows of a list.
[[nodiscard]] std::vector<std::string> RowsOf(const IListBox& list);

/// Selects the row of a list view that stands for a field; whether there is one.
[[nodiscard]] bool SelectEntry(HeadlessUser& user, const FieldRow& row);

/// What stands in a field: its text, its rows one after the other, the number of its choice or of
/// its box's state.
[[nodiscard]] std::string ShownIn(HeadlessDialog& page, const FieldRow& row);

/// The same in words that do not change when what is shown is written and read again: what is not
/// set reads as 0, and the order of a list is nobody's.
[[nodiscard]] std::string MeantIn(HeadlessDialog& page, const FieldRow& row);

}  // namespace pelora::testing
