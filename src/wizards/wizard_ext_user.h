// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "wizards/wizard_extension.h"
#include "wizards/wizard_page.h"

namespace pelora {

/// The page of the wizard for users: account type, visibility, capacity, e-mail address, home
/// server.
///
/// The capacity goes with the account type alone: once enabled it stays so until another type is
/// chosen, whatever the check box says.
class CWizardExtUser : public CWizardPage<CWizardExtension> {
 public:
  explicit CWizardExtUser(const Platform& platform);

 protected:
  ~CWizardExtUser() override = default;

 private:
  HRESULT Load(const BoundObjects& objects);
  /// The account type and the capacity, which come before the fields.
  HRESULT Collect(ChangeList& changes);
  /// An active user needs an e-mail address.
  HRESULT Validate(std::string* message);
  [[nodiscard]] static std::vector<FieldRow> TypeRows();

  std::int32_t OnAccountTypeChanged();

  [[nodiscard]] IComboBox& AccountTypeList() const;
};

}  // namespace pelora
