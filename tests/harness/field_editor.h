// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_user.h"
#include "platform/field_rows.h"
#include "tests/support/fake_choosers.h"

// A person who edits the fields of any page, by what the page itself tells of them: a tab that is
// new in the class table is edited without a word written for it.

namespace pelora::testing {

/// What the fields are to be in the end. Every one of them differs from what `FirstValues` says.
struct EditedValues {
  std::string text = "edited";
  std::string number = "7";
  std::string address = "added@x.example";
  std::string default_address = "second@x.example";
  /// Name of the object that every chooser gives.
  std::string chosen = "CN=chosen,DC=x";
  /// Place of a choice.
  std::size_t choice = 2;
  /// The box of the account, without which nothing is validated.
  bool account = true;
  bool flag = true;
};

/// Path and `cn` of what the choosers give.
[[nodiscard]] std::string ChosenPath(const EditedValues& wanted);
[[nodiscard]] std::string ChosenCommonName(const EditedValues& wanted);

/// What an attribute of a field holds before it is edited.
struct FirstValue {
  std::string attribute;
  /// As texts; none: it is not set.
  std::vector<std::string> values;
  bool is_number = false;
};

/// What the fields' attributes hold of the object of a place in the selection. With `objects` of
/// several, they differ in numbers and flags.
[[nodiscard]] std::vector<FirstValue> FirstValues(std::span<const FieldRow> rows, std::size_t place,
                                                  std::size_t objects);

class FieldEditor {
 public:
  enum class Done : std::uint8_t {
    kYes,
    /// The page does not let anybody edit it now: hidden, disabled, or shown only.
    kNotEditable,
    /// It was tried and the field is not as it was to be.
    kNo,
  };

  /// What opens beside the page. All outlive the editor.
  FieldEditor(HeadlessModalDialogs& dialogs, FakeChoosers& choosers, EditedValues wanted = {})
      : dialogs_(dialogs), choosers_(choosers), wanted_(std::move(wanted)) {}

  /// Makes a field what it is to be, as an edit that the page hears of even where it is so already.
  /// Of lists what is there already is left as it is.
  Done Edit(HeadlessUser user, const FieldRow& row);

  /// Edits every field that can be edited, those first that enable others, and each once more when
  /// it did not take. The names of the fields that are as they are to be.
  std::vector<std::string> EditAll(HeadlessUser user, std::span<const FieldRow> rows);

 private:
  Done SetFlag(HeadlessUser& user, const FieldRow& row);
  Done Type(HeadlessUser& user, const FieldRow& row);
  Done Choose(HeadlessUser& user, const FieldRow& row);
  Done MakeDefault(HeadlessUser& user, const FieldRow& row);
  Done AddText(HeadlessUser& user, const FieldRow& row);
  Done AddName(HeadlessUser& user, const FieldRow& row);
  Done SelectChoice(HeadlessUser& user, const FieldRow& row);
  Done ClickChoice(HeadlessUser& user, const FieldRow& row);
  /// Clicks a button that opens a chooser, in which the wanted object is chosen.
  UserAnswer ClickChooser(HeadlessUser& user, ControlId button);

  HeadlessModalDialogs& dialogs_;
  FakeChoosers& choosers_;
  EditedValues wanted_;
};

}  // namespace pelora::testing
