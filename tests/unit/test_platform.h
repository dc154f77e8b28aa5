// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "hosts/headless/headless_choosers.h"
#include "hosts/headless/headless_component_library.h"
#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_property_sheet.h"
#include "hosts/headless/headless_text_service.h"
#include "hosts/resources/resource_file.h"
#include "platform/platform.h"
#include "tests/support/fake_directory.h"
#include "tests/support/fault_directory.h"

namespace pelora::testing {

/// The module's own templates, as this program carries them.
inline resources::ResourceFile ModuleTemplates() {
  return resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
}

/// A host without a screen over a directory in memory, whose calls can be made to fail.
struct TestHost {
  FakeDirectory directory;
  FaultDirectory faulty{directory};
  resources::ResourceFile templates = ModuleTemplates();
  HeadlessMessageBox message_box;
  HeadlessModalDialogs modal_dialogs{templates};
  HeadlessChoosers choosers;
  HeadlessTextService text;
  HeadlessComponentLibrary component_library;
  Platform platform{faulty, message_box, modal_dialogs, choosers, text, component_library};

  [[nodiscard]] FaultPlan& faults() { return faulty.plan(); }
};

}  // namespace pelora::testing
