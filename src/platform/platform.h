// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/ads.h"
#include "platform/choosers.h"
#include "platform/component_library.h"
#include "platform/message_box.h"
#include "platform/modal_dialogs.h"
#include "platform/text_service.h"

namespace pelora {

/// Everything that the extension asks of its surroundings. A host makes one and hands it to every
/// component; it outlives them all.
struct Platform {
  IDirectoryService& directory;
  IMessageBox& message_box;
  IModalDialogs& modal_dialogs;
  IChoosers& choosers;
  ITextService& text;
  IComponentLibrary& component_library;
};

}  // namespace pelora
