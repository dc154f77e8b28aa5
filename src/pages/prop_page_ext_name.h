// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

#include "pages/dialog_page.h"
#include "pages/prop_page_ext.h"

namespace pelora {

/// An object's common name and name, which are shown, and its description, which can be edited.
///
/// Of several objects the first one's common name is shown and neither name nor description; a
/// description that is typed then is written to each of them.
class CPropPageExtName final : public CPropPageExt {
 public:
  explicit CPropPageExtName(CPropPage& page);

  /// Edits of the description.
  [[nodiscard]] std::vector<Command> Commands();

 private:
  HRESULT Load(const BoundObjects& objects);
  HRESULT Collect(ChangeList& changes);
  void ShowCommonName(const BoundObjects& objects) const;
  std::int32_t OnDescriptionEdited();

  bool description_changed_ = false;
};

}  // namespace pelora
