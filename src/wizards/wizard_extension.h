// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "wizards/wizard_base.h"

namespace pelora {

/// Base of a page in a wizard that the console owns: one check box, and groupware fields that it
/// enables. What the fields hold is staged on the new object before the console commits it.
class CWizardExtension : public CWizardBase {
 public:
  using CWizardBase::CWizardBase;

  /// In the pre-commit phase stages `peloraAccount` (1, or 0 alone when the box is not checked) and
  /// the fields on the new object, empty ones left out; does nothing in the others. A failure is
  /// shown. `kDataWritten` or `kDataNotWritten`.
  HRESULT WriteData(IDialog* owner, NewObjectPhase phase) final;
  /// "Pelora enabled" or "Pelora disabled".
  HRESULT GetSummaryInfo(std::string& text) final;

  /// Whether the object is to be a groupware object.
  [[nodiscard]] bool create_checked() const { return create_checked_; }
  /// What is to be written, in order: the account flag, then the fields when the box is checked.
  /// `changes` is incomplete after a failure.
  [[nodiscard]] HRESULT CollectChanges(ChangeList& changes) const;

 protected:
  ~CWizardExtension() override = default;

  /// The check box was clicked.
  std::int32_t OnCreateClicked();

  /// A page whose box is not checked never holds the wizard back.
  void Activate() const final;

  // Fields that are filled by a chooser, which belongs to the page's window. A choice that fails or
  // is cancelled changes nothing and shows nothing; each is the result of a button's message.
  std::int32_t ChooseComputer(ControlId field) const;
  std::int32_t ChooseUser(ControlId field) const;
  std::int32_t ChooseContainer(ControlId field) const;

  /// "1" or "0", as the box is checked.
  [[nodiscard]] std::string FlagOf(ControlId box) const;

 private:
  [[nodiscard]] HRESULT WriteNewObject() const;
  [[nodiscard]] HRESULT WriteChanges(const BoundObjects& objects) const;

  bool create_checked_ = false;
};

/// A change of a new object's attribute: a new object is one, and all of it is to be written that
/// is not left out.
[[nodiscard]] AttributeChange MakeNewObjectChange(const Attribute& attribute, std::string value,
                                                  bool is_written = true);

}  // namespace pelora
