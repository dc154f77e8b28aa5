// SPDX-License-Identifier: Apache-2.0
// The templates of the features tab and of the archive servers, control by control, and the tab's
// entry of the string table.
#include <gtest/gtest.h>

#include "hosts/resources/resource_file.h"

namespace pelora::resources {
namespace {

using Lines = std::vector<std::string>;

constexpr std::uint32_t kVisible = 0x10000000;
constexpr std::uint32_t kDisabled = 0x08000000;
constexpr std::uint32_t kTabStop = 0x00010000;

DialogTemplate Read(std::uint16_t id) {
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  const auto dialog = file.value.value().Dialog(id);
  EXPECT_EQ(dialog.error, "");
  return dialog.value.value();
}

/// A control in one line: number, class, text; "off" when it is disabled, "hidden" when it is that.
std::string Describe(const DialogItem& item) {
  std::string line = std::to_string(item.id) + ' ' + item.window_class + " '" + item.title + '\'';
  if ((item.style & kDisabled) != 0) line += " off";
  if ((item.style & kVisible) == 0) line += " hidden";
  return line;
}

Lines Describe(const DialogTemplate& dialog) {
  Lines lines;
  for (const DialogItem& item : dialog.items) lines.push_back(Describe(item));
  return lines;
}

/// The bits of a style that mean something to that class of controls.
std::uint32_t OwnStyle(const DialogItem& item) { return item.style & 0xFFFFU; }

TEST(FeaturesTemplate, IsAPageWithItsControls) {
  const DialogTemplate page = Read(227);
  EXPECT_EQ(page.title, "Pelora Features");
  EXPECT_EQ(page.style, 0x48C0004CU);
  EXPECT_EQ(page.width, Read(102).width) << "as large as the user's first tab";
  EXPECT_EQ(page.height, Read(102).height);
  EXPECT_EQ(Describe(page), (Lines{"311 SYSLISTVIEW32 ''", "312 BUTTON 'Properties' off",
                                   "308 BUTTON 'Enable' off", "309 BUTTON 'Disable' off"}));
  // Report view, selection always shown, heads that sort nothing.
  EXPECT_EQ(OwnStyle(page.items[0]), 0x8009U);
  EXPECT_EQ(OwnStyle(page.items[1]), 1U) << "the default button";
  EXPECT_EQ(OwnStyle(page.items[2]), 0U);
  EXPECT_EQ(OwnStyle(page.items[3]), 0U);
  for (const DialogItem& item : page.items) EXPECT_NE(item.style & kTabStop, 0U) << item.id;
}

TEST(FeaturesTemplate, StandsInTheStringTable) {
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  EXPECT_EQ(file.value.value().StringEntry(113), "Pelora Features");
}

TEST(ArchiverTemplate, IsADialogWithItsControls) {
  const DialogTemplate dialog = Read(229);
  EXPECT_EQ(dialog.title, "Archive Servers");
  EXPECT_EQ(Describe(dialog),
            (Lines{"1043 BUTTON 'Archive Servers'", "105 BUTTON 'Search'", "1002 EDIT ''",
                   "1008 BUTTON 'Add' off", "1007 LISTBOX ''", "1009 BUTTON 'Remove' off",
                   "1 BUTTON 'OK'", "2 BUTTON 'Cancel'"}));
  constexpr std::uint32_t kGroupBox = 7;
  constexpr std::uint32_t kListBoxNotify = 1;
  constexpr std::uint32_t kListBoxSort = 2;
  EXPECT_EQ(OwnStyle(dialog.items[0]), kGroupBox);
  EXPECT_EQ(OwnStyle(dialog.items[4]) & (kListBoxNotify | kListBoxSort), kListBoxNotify)
      << "servers are appended";
  EXPECT_EQ(OwnStyle(dialog.items[6]), 1U) << "the default button";
  EXPECT_EQ(OwnStyle(dialog.items[7]), 0U);
}

}  // namespace
}  // namespace pelora::resources
