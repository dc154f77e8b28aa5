// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "wizards/wizard_fields.h"

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
  /// The check box, which comes before the page's fields.
  [[nodiscard]] std::vector<Command> OwnCommands();
  [[nodiscard]] static std::vector<FieldRow> OwnRows();

  /// A page whose box is not checked never holds the wizard back.
  void Activate() const final;

 private:
  [[nodiscard]] HRESULT WriteNewObject() const;
  [[nodiscard]] HRESULT WriteChanges(const BoundObjects& objects) const;

  bool create_checked_ = false;
};

}  // namespace pelora
