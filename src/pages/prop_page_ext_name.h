// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "pages/edited_fields.h"

namespace pelora {

/// An object's common name and name, which are shown, and its description, which can be edited.
///
/// Of several objects the first one's common name is shown and neither name nor description; a
/// description that is typed then is written to each of them.
class CPropPageExtName final : public EditedFields {
 public:
  explicit CPropPageExtName(CPropPage& page);

  /// Shows the common name in the page's head, then the fields.
  HRESULT Load(const BoundObjects& objects);

 private:
  void ShowCommonName(const BoundObjects& objects) const;
};

}  // namespace pelora
