// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/session/commands/value_command.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/sheet_commit.h"
#include "hosts/session/typed/address_owner.h"

namespace pelora::session {

/// What a command comes to with one of the selected objects.
struct PlannedObject {
  /// Its place in the selection.
  std::size_t at = 0;
  PlannedValues values;

  /// Whether it is written: what is wrong never is, what is odd only where that is meant.
  [[nodiscard]] bool IsWritten(bool with_odd) const {
    return values.IsChange() && values.judgement.verdict != Verdict::kWrong &&
           (with_odd || values.judgement.verdict != Verdict::kOdd);
  }
};

/// A command on a selection of objects: reads them, works out what it would do to each, and writes
/// that as the changes of a sheet are written, guarded, reviewed, told and kept to be taken back.
class SelectionCommand {
 public:
  /// Everything in `surroundings`, whose `book` says what the fields are called, outlives the
  /// object. The objects are read with these attributes: see `ValueCommand::Attributes`.
  SelectionCommand(CommitSurroundings surroundings, std::vector<DirectoryObject> selection,
                   std::vector<std::string> attributes);

  [[nodiscard]] std::span<const DirectoryObject> selection() const { return selection_; }

  /// Reads the objects, in an errand; on a failure none is known.
  [[nodiscard]] ldap::StoreStatus Read();

  /// What a command that can be done comes to, in the order of the selection. An address that two
  /// of them would get is odd with the second.
  [[nodiscard]] std::vector<PlannedObject> PlanAll(const ValueCommand& command) const;

  /// The addresses that objects would get, each once: to be asked for who has them.
  [[nodiscard]] static std::vector<std::string> NewAddressesOf(
      std::span<const PlannedObject> planned);
  /// Odd is an address that somebody else has: its sentence says who.
  void TakeOwners(const AddressOwners& owners, std::vector<PlannedObject>& planned) const;

  /// Writes what is to be written of a plan. Whether all of it was done; what was not is forgotten,
  /// and the objects are known as they were read.
  [[nodiscard]] bool Write(std::span<const PlannedObject> planned, bool with_odd);

 private:
  CommitSurroundings surroundings_;
  std::vector<DirectoryObject> selection_;
  std::vector<std::string> attributes_;
  std::vector<ldap::Entry> entries_;
};

/// "3 will be changed, 2 are as wanted, 1 is left out": what there is of each.
[[nodiscard]] std::string PlanText(std::span<const PlannedObject> planned, bool with_odd);

}  // namespace pelora::session
