// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "hosts/changes/recording_directory.h"
#include "hosts/session/guarded_tabs.h"
#include "hosts/session/told_failures.h"

namespace pelora::session {

/// A tab between the sheet and the directory: what it records, and who is told of its failures.
struct GuardedTabs::Tab {
  Tab(const TabSurroundings& surroundings, IErrands& errands, std::vector<std::string> attributes)
      : recording(surroundings.store,
                  {.attributes = std::move(attributes),
                   .keeps = [this](auto attribute) { return fields.touched.IsWanted(attribute); },
                   .breathe = [&errands] { errands.Breathe(); }}),
        told(recording, surroundings.platform.message_box, errands),
        between(surroundings.between ? surroundings.between(told) : nullptr),
        platform{.directory = between ? *between : told,
                 .message_box = told,
                 .modal_dialogs = surroundings.platform.modal_dialogs,
                 .choosers = surroundings.platform.choosers,
                 .text = surroundings.platform.text,
                 .component_library = surroundings.platform.component_library} {}

  /// Who was left out of what the page was to write is not left out of what is edited once more.
  void TakeInEdited() {
    for (const std::size_t field : fields.touched.TakeEdited()) {
      recording.TakeInAgain(fields.touched.Row(field).attributes);
    }
  }

  PageFields fields;
  changes::RecordingDirectory recording;
  ToldFailures told;
  std::unique_ptr<IDirectoryService> between;
  Platform platform;
  /// Told what became of what was recorded, as long as the page is shown. May be none.
  std::function<void(const std::function<bool(const std::string& dn)>& is_done)> on_committed;
};

}  // namespace pelora::session
