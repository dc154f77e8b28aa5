// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "hosts/console/dialogs/modal_dialogs.h"
#include "hosts/console/program/component_library.h"
#include "hosts/console/text/text_service.h"
#include "platform/platform.h"

namespace pelora::console {

/// The ports of the console over one directory. It outlives every component made with it.
class ConsolePlatform {
 public:
  /// All four outlive the object. `module` holds the dialog templates.
  ConsolePlatform(IDirectoryService& directory, IMessageBox& message_box, IChoosers& choosers,
                  const resources::ResourceFile& module)
      : modal_dialogs_(module),
        platform_{.directory = directory,
                  .message_box = message_box,
                  .modal_dialogs = modal_dialogs_,
                  .choosers = choosers,
                  .text = text_,
                  .component_library = component_library_} {}
  ConsolePlatform(const ConsolePlatform&) = delete;
  ConsolePlatform& operator=(const ConsolePlatform&) = delete;

  [[nodiscard]] const Platform& platform() const { return platform_; }
  [[nodiscard]] const CountingComponentLibrary& component_library() const {
    return component_library_;
  }

 private:
  QtModalDialogs modal_dialogs_;
  QtTextService text_;
  CountingComponentLibrary component_library_;
  Platform platform_;
};

}  // namespace pelora::console
