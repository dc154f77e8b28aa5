// SPDX-License-Identifier: Apache-2.0
// Every dialog template that was compiled into the program, control by control.
#include "tests/support/module_dialogs.h"

#include <gtest/gtest.h>

#include <cctype>
#include <map>
#include <set>
#include <string>

#include "hosts/resources/resource_file.h"
#include "tests/support/dialog_text.h"

namespace pelora::resources {
namespace {

using testing::ModuleDialog;
using testing::ModuleDialogs;

ResourceFile Module() { return ResourceFile::Read(EmbeddedResourceBytes()).value.value(); }

TEST(ModuleDialogs, EachIsAsItsTableSays) {
  const ResourceFile module = Module();
  for (const ModuleDialog& expected : ModuleDialogs()) {
    SCOPED_TRACE("dialog " + std::to_string(expected.id));
    const auto dialog = module.Dialog(expected.id);
    EXPECT_EQ(dialog.error, "");
    EXPECT_EQ('\n' + testing::ToText(dialog.value.value_or(DialogTemplate{})), expected.text);
  }
}

TEST(ModuleDialogs, TheTableNamesThemAll) {
  std::set<DialogId> named;
  for (const ModuleDialog& dialog : ModuleDialogs()) {
    EXPECT_TRUE(named.insert(dialog.id).second) << dialog.id << " stands there twice";
  }
  std::set<DialogId> found;
  const ResourceFile module = Module();
  for (const Resource& resource : module.resources()) {
    if (resource.type == ResourceName(kDialogType)) {
      found.insert(std::get<std::uint16_t>(resource.name));
    }
  }
  EXPECT_EQ(found, named) << "a new dialog gets a row in tests/support/module_dialogs.cpp";
}

TEST(ModuleDialogs, TabsAreOfOneSizeAndPagesOfWizardsOfAnother) {
  for (const ModuleDialog& dialog : ModuleDialogs()) {
    const std::string_view head = dialog.text.substr(0, dialog.text.find('\n', 1));
    if (!head.starts_with("\npage")) continue;
    const bool is_wizard = head.find("New object:") != std::string_view::npos;
    EXPECT_TRUE(head.ends_with(is_wizard ? "262 x 157, 8 \"MS Shell Dlg\""
                                         : "271 x 228, 8 \"MS Shell Dlg\""))
        << dialog.id;
  }
}

/// Mnemonics of a dialog that stand on several controls, in lower case.
std::string SharedMnemonics(const DialogTemplate& dialog) {
  std::map<char, int> uses;
  for (const DialogItem& item : dialog.items) {
    const std::size_t mark = item.title.find('&');
    if (mark == std::string::npos) continue;
    const auto letter = static_cast<unsigned char>(item.title.at(mark + 1));
    ++uses[static_cast<char>(std::tolower(letter))];
  }
  std::string shared;
  for (const auto& [letter, count] : uses) {
    if (count > 1) shared += letter;
  }
  return shared;
}

TEST(ModuleDialogs, AMnemonicIsSharedOnlyByButtonsOfTheSamePublishedText) {
  // Pressed again it goes on to the next of them.
  const std::map<DialogId, std::string> known = {{101, "s"}, {204, "adq"}, {226, "ad"}};
  std::map<DialogId, std::string> shared;
  for (const ModuleDialog& dialog : ModuleDialogs()) {
    const std::string mnemonics = SharedMnemonics(Module().Dialog(dialog.id).value.value());
    if (!mnemonics.empty()) shared[dialog.id] = mnemonics;
  }
  EXPECT_EQ(shared, known);
}

TEST(ModuleDialogs, EveryIconThatADialogShowsIsThere) {
  const ResourceFile module = Module();
  int icons = 0;
  for (const ModuleDialog& dialog : ModuleDialogs()) {
    const auto read = module.Dialog(dialog.id);
    for (const DialogItem& item : read.value.value().items) {
      if (!item.title_resource) continue;
      EXPECT_TRUE(module.Find(kGroupIconType, *item.title_resource)) << dialog.id;
      ++icons;
    }
  }
  EXPECT_GT(icons, 0);
}

TEST(DialogText, NamesWhatIsUnusualAndEveryBit) {
  DialogTemplate dialog;
  dialog.style = 0x48C0004C;
  dialog.title = "Title";
  dialog.width = 10;
  dialog.height = 20;
  DialogItem edit;
  edit.kind = ControlKind::kEdit;
  edit.id = 7;
  edit.style = 0x5A812880;
  DialogItem odd;
  odd.kind = ControlKind::kOther;
  odd.id = 0xFFFFFFFF;
  odd.window_class = "ODD";
  odd.style = 0x10000004;
  odd.extended_style = 1;
  DialogItem bare;
  bare.kind = ControlKind::kButton;
  bare.id = 8;
  bare.style = 0x40000003;
  bare.title = "&Box";
  DialogItem icon;
  icon.kind = ControlKind::kStatic;
  icon.id = 0xFFFFFFFF;
  icon.style = 0x50000003;
  icon.title_resource = 230;
  dialog.items = {edit, odd, bare, icon};
  EXPECT_EQ(testing::ToText(dialog),
            "page \"Title\", 10 x 20\n"
            "7 edit, disabled, digits only, read-only, with 0x02000000\n"
            "ODD, with 0x10000004, extended 0x00000001\n"
            "8 check box, without 0x10010000 \"&Box\"\n"
            "icon 230\n");
}

}  // namespace
}  // namespace pelora::resources
