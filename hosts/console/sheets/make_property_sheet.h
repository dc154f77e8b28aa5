// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <span>

#include "hosts/console/fields/sheet_fields.h"
#include "hosts/console/sheets/property_sheet.h"
#include "hosts/ldap/display_specifiers.h"
#include "hosts/session/guarded_tabs.h"

namespace pelora::console {

/// A sheet, or a sentence that says why there is none.
struct SheetResult {
  std::unique_ptr<QtPropertySheet> sheet;
  QString error;
  /// What the sheet lacks, and why; empty when it is whole.
  QString missing;
  /// There is none since it was stopped.
  bool is_stopped = false;
  /// Whether the sheet is to be opened anew: see `session::GuardedTabs::is_outdated`.
  std::function<bool()> is_outdated{};
  /// Belongs to the sheet.
  SheetFields* fields = nullptr;
};

/// Makes the property sheet of a selection, started but not shown. Its tabs are guarded: see
/// `session::GuardedTabs`; its fields are looked after: see `SheetFields`. Everything in
/// `surroundings` outlives the sheet; its templates are those of `session::WithOwnPages`, which is
/// long to make and the same for all sheets. `show_object` opens another object's settings; it may
/// be none.
[[nodiscard]] SheetResult MakePropertySheet(std::span<const session::DirectoryObject> selection,
                                            const ldap::DisplaySpecifiers& specifiers,
                                            session::TabSurroundings surroundings, QWidget* parent,
                                            ShowObject show_object = {});

}  // namespace pelora::console
