// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "hosts/headless/headless_component_library.h"
#include "hosts/headless/headless_message_box.h"
#include "hosts/headless/headless_modal_dialogs.h"
#include "hosts/headless/headless_text_service.h"
#include "hosts/resources/resource_file.h"
#include "platform/platform.h"
#include "tests/support/fake_choosers.h"

namespace pelora::testing {

/// The module's own templates, as this program carries them. Read once: a test may make thousands
/// of benches.
[[nodiscard]] inline const resources::ResourceFile& ModuleTemplates() {
  static const resources::ResourceFile templates =
      resources::ResourceFile::Read(resources::EmbeddedResourceBytes()).value.value();
  return templates;
}

/// All that a page is run on without a screen: dialogs in memory, made from the module's own
/// templates, choosers in which nobody chooses, and a directory of the test's choice.
class HostBench {
 public:
  /// `directory` outlives the bench.
  explicit HostBench(IDirectoryService& directory)
      : platform{directory, messages, dialogs, choosers, text, library} {}
  HostBench(const HostBench&) = delete;
  HostBench& operator=(const HostBench&) = delete;

  [[nodiscard]] static const resources::ResourceFile& templates() { return ModuleTemplates(); }
  [[nodiscard]] static resources::DialogTemplate Template(DialogId dialog) {
    const auto read = templates().Dialog(dialog);
    EXPECT_TRUE(read.value.has_value()) << read.error;
    return read.value.value_or(resources::DialogTemplate{});
  }
  /// The boxes that have been shown, one line each, in which "|" stands for the end of a line.
  [[nodiscard]] std::string Boxes() const {
    std::string boxes;
    for (const HeadlessMessageBox::Record& record : messages.records()) {
      for (const char letter : record.message.text) {
        if (letter != '\r') boxes += letter == '\n' ? '|' : letter;
      }
      boxes += "\n";
    }
    return boxes;
  }

  HeadlessMessageBox messages;
  HeadlessModalDialogs dialogs{templates()};
  FakeChoosers choosers;
  HeadlessTextService text;
  HeadlessComponentLibrary library;
  Platform platform;
};

}  // namespace pelora::testing
