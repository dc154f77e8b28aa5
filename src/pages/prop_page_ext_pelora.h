// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pages/dialog_page.h"
#include "pages/prop_page_ext.h"

namespace pelora {

/// The account and visibility boxes: whether an object takes part in the groupware system at all,
/// and whether it is left out of the address book.
///
/// While the account box is not checked, nothing on the page is validated.
class CPropPageExtPelora final : public CPropPageExt {
 public:
  explicit CPropPageExtPelora(CPropPage& page);

  /// Clicks on either box.
  [[nodiscard]] std::vector<Command> Commands();

 private:
  std::int32_t OnAccountClicked();
  std::int32_t OnHiddenClicked();

  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes);
  [[nodiscard]] int SkipValidation() const;
  [[nodiscard]] bool IsChecked(ControlId box) const;
  void OnClicked(ControlId box, bool& changed);

  bool account_changed_ = false;
  bool hidden_changed_ = false;
};

}  // namespace pelora
