// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QList>
#include <span>

#include "hosts/console/finding/remembered.h"
#include "hosts/console/sheets/property_sheet.h"
#include "hosts/session/directory_browser.h"

namespace pelora::console {

/// Where sheets lie on the screen and how large they are: as the last of their kind was when it was
/// closed. The sheets of users are of one kind, those of groups of another, and so on; those of
/// several objects are as those of one.
class SheetPlaces {
 public:
  /// Gives a sheet that is not shown yet its kind's place, as far as the screen has it.
  void Recall(QtPropertySheet& sheet, std::span<const session::DirectoryObject> selection) const;
  /// Keeps the place of a sheet for the next of its kind.
  void Remember(const QtPropertySheet& sheet, std::span<const session::DirectoryObject> selection);

 private:
  Remembered remembered_;
};

/// Moves a sheet that lies exactly on another of these, so that both are to be seen.
void PutBeside(QtPropertySheet& sheet, const QList<QtPropertySheet*>& others);

}  // namespace pelora::console
