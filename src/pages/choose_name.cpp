// SPDX-License-Identifier: Apache-2.0
#include "pages/choose_name.h"

namespace pelora {

void ChooseName(CPropPage& page, const Platform& platform, SelectADObject::Choice choice,
                ControlId edit) {
  const SelectADObject chooser(platform);
  std::vector<std::string> names;
  if ((chooser.*choice)(&page.Dialog(), names, SelectionMode::kSingle) != S_OK) return;
  if (names.empty()) return;
  page.Dialog().SetText(edit, names.front());
  page.SetModified(true);
}

}  // namespace pelora
