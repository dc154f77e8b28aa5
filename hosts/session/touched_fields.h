// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dialog.h"
#include "platform/dialog_controller.h"
#include "platform/field_rows.h"

namespace pelora::session {

/// Which fields of a page a person has changed: those that show something else than they did when
/// the page was filled or last written, those whose value was taken away by a command, and those
/// whose change could not be written. Pages stage some attributes on every apply, touched or not;
/// by this a host leaves out what nobody changed. Set back to what it was, a field is unchanged.
///
/// Compared are fields whose control shows their whole value, and lists. Of all others every
/// staging counts as wanted, and so it does of lists: pages stage those only when they were edited.
/// A row of a list view that does not say everything is wanted when it says something else, or when
/// something was reported that may have edited it.
class TouchedFields {
 public:
  /// The page's fields, before the first is looked at.
  void Watch(std::vector<FieldRow> fields);
  /// As they were given.
  [[nodiscard]] const FieldRow& Row(std::size_t field) const { return fields_.at(field).row; }
  [[nodiscard]] std::size_t Count() const { return fields_.size(); }

  /// The dialog has been filled, or written: what it shows now is what nobody has changed.
  void Settle(IDialog& dialog);
  /// The same of the fields of one control.
  void Settle(ControlId control, IDialog& dialog);
  /// The page is about to apply: a look.
  void LookBeforeApply(IDialog& dialog);
  /// The page has applied, and may have filled itself on the way: what was unchanged before and is
  /// another now is what nobody has changed.
  void SettleFilled(IDialog& dialog);
  /// The page has not applied. Where it shows something else than before, it has filled itself
  /// anew, and that is what nobody has changed.
  void SettleIfRefilled(IDialog& dialog);
  /// A control has reported something.
  void Touch(ControlId control);
  /// Looks which fields show something else.
  void Look(IDialog& dialog);
  /// Fields that were edited since this was asked last, though they may show by now what they did
  /// then; of those that are not seen whole, the ones that may have been.
  [[nodiscard]] std::vector<std::size_t> TakeEdited();
  /// What the last look found changed could not be written: it stays changed, whatever is shown,
  /// until it is settled. What it was set to may be pending, or written already to some objects.
  void KeepUnwritten();
  /// The page has not applied, and may have forgotten on its way what was changed: it hears once
  /// more of every changed field that shows its whole value.
  void TellChanged(IDialogController& page) const;

  /// Whether a field was changed, by the last look.
  [[nodiscard]] bool IsChanged(std::size_t field) const;
  /// Whether a field's value was taken away by `RemoveValue`, and nothing put in its place.
  [[nodiscard]] bool IsRemoved(std::size_t field) const { return fields_.at(field).is_removed; }
  /// Whether a box was filled undecided.
  [[nodiscard]] bool WasUndecided(std::size_t field) const;
  /// Whether any field was changed.
  [[nodiscard]] bool HasChangedFields() const;
  /// Whether something was reported for which none of the compared fields accounts: it may have
  /// changed what cannot be seen.
  [[nodiscard]] bool HasOtherEdits() const { return has_other_edits_; }
  /// Whether what a page stages of an attribute is wanted.
  [[nodiscard]] bool IsWanted(std::string_view attribute) const;

  /// The row of a list view that stands for a field has been chosen to be as it says for every
  /// object: a change, though it said so before in sum.
  void ChooseForAll(std::size_t field) {
    fields_.at(field).is_chosen = true;
    fields_.at(field).is_edited = true;
  }

  /// Whether a field can be set back from outside. What stands in a row of a list view cannot be
  /// once it could not be written: others may share its attributes.
  [[nodiscard]] bool CanSetBack(std::size_t field) const;
  /// Sets a field back to what it showed. The page hears of it as of a person's edit; a list has
  /// forgotten then that it was edited, and is not staged.
  void SetBack(std::size_t field, IDialog& dialog, IDialogController& page);
  /// Whether a field has its control to itself and can be emptied from outside.
  [[nodiscard]] bool CanRemove(std::size_t field) const;
  /// Empties a field and takes its value from every object, though they may differ and the field
  /// be empty for that reason.
  void RemoveValue(std::size_t field, IDialog& dialog);

 private:
  /// How a control shows its field.
  enum class Shows : std::uint8_t {
    kWholeValue,
    /// Its rows; looked at only after something was reported, for there may be thousands.
    kList,
    /// One row of a list view.
    kEntry,
    /// One row of a list view, which does not say everything.
    kEntryInPart,
    /// Not all of it.
    kLess,
  };
  struct Field {
    FieldRow row;
    Shows shows = Shows::kLess;
    std::string read{};
    ButtonStyle read_style = ButtonStyle::kAutoCheckBox;
    /// Puts back what was read; none where the text says it whole.
    std::function<void()> put_back{};
    std::string shown{};
    std::string before_apply{};
    bool was_reported = false;
    bool is_removed = false;
    bool is_unwritten = false;
    bool is_chosen = false;
    /// Since `TakeEdited`.
    bool is_edited = false;

    [[nodiscard]] bool IsChanged() const {
      return is_removed || is_unwritten || is_chosen || shown != read;
    }
  };

  [[nodiscard]] static Shows HowShown(const FieldRow& row);
  static void Settle(Field& field, IDialog& dialog);
  /// Whether every edit can be seen.
  [[nodiscard]] static bool IsSeenWhole(Shows shows);
  void PutBack(const Field& known, IDialog& dialog);

  std::vector<Field> fields_;
  /// Something was reported that no compared field accounts for.
  bool has_other_edits_ = false;
};

}  // namespace pelora::session
