// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/edited_fields.h"

namespace pelora {

/// The account and visibility boxes: whether an object takes part in the groupware system at all,
/// and whether it is left out of the address book.
///
/// While the account box is not checked, nothing on the page is validated.
class CPropPageExtPelora final : public EditedFields {
 public:
  explicit CPropPageExtPelora(CPropPage& page);

  [[nodiscard]] int SkipValidation() const;
};

}  // namespace pelora
