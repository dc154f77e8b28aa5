// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <vector>

#include "hosts/session/directory_browser.h"
#include "hosts/session/errands.h"
#include "hosts/session/writing_desk.h"
#include "platform/message_box.h"

class QWidget;

namespace pelora::console {

struct ShownDirectory;

/// What commands on a selection are run with. All of it outlives them.
struct CommandDesk {
  ShownDirectory& directory;
  session::IErrands& errands;
  session::IWritingDesk& desk;
  IMessageBox& message_box;
};

/// Whether there is anything that a command could change of these objects.
[[nodiscard]] bool HasCommands(ShownDirectory& directory,
                               const std::vector<session::DirectoryObject>& selection);

/// Reads the objects and shows the dialog of commands on them, until it is closed. Why they cannot
/// be read, as a sentence; empty otherwise.
[[nodiscard]] QString RunCommands(const CommandDesk& with,
                                  const std::vector<session::DirectoryObject>& selection,
                                  QWidget* parent);

}  // namespace pelora::console
