// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "directory/select_ad_object.h"
#include "pages/prop_page.h"

namespace pelora {

/// Lets the administrator choose one object, in a chooser owned by the page, puts its name into an
/// edit control of the page, which reports that as an edit, and marks the page modified. A choice
/// that fails or is cancelled changes nothing.
void ChooseName(CPropPage& page, const Platform& platform, SelectADObject::Choice choice,
                ControlId edit);

}  // namespace pelora
