// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>

#include "hosts/ctl/pages/offered_objects.h"
#include "hosts/headless/headless_choosers.h"
#include "hosts/headless/headless_component_library.h"
#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_text_service.h"
#include "platform/platform.h"

namespace pelora::ctl {

/// The ports for pages that are operated in memory. It outlives every component made with it.
struct PagePlatform {
  /// All outlive the platform; the store may be missing where nothing is chosen.
  PagePlatform(IDirectoryService& directory, ldap::IDirectoryStore* store,
               const resources::ResourceFile& module)
      : modal_dialogs(module),
        offered(store),
        choosers(std::ref(offered)),
        platform{.directory = directory,
                 .message_box = message_box,
                 .modal_dialogs = modal_dialogs,
                 .choosers = choosers,
                 .text = text,
                 .component_library = component_library} {}
  PagePlatform(const PagePlatform&) = delete;
  PagePlatform& operator=(const PagePlatform&) = delete;

  HeadlessMessageBox message_box;
  HeadlessModalDialogs modal_dialogs;
  /// Asked by the choosers.
  OfferedObjects offered;
  HeadlessChoosers choosers;
  HeadlessTextService text;
  HeadlessComponentLibrary component_library;
  Platform platform;
};

}  // namespace pelora::ctl
