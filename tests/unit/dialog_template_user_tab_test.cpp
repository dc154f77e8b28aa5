// SPDX-License-Identifier: Apache-2.0
// The user tab's template as it was compiled, control by control.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <set>
#include <string>

#include "hosts/resources/resource_file.h"
#include "resources/resource.h"

namespace pelora::resources {
namespace {

constexpr std::uint32_t kChild = 0x40000000;
constexpr std::uint32_t kVisible = 0x10000000;
constexpr std::uint32_t kDisabled = 0x08000000;
constexpr std::uint32_t kBorder = 0x00800000;
constexpr std::uint32_t kVerticalScroll = 0x00200000;
constexpr std::uint32_t kGroup = 0x00020000;
constexpr std::uint32_t kTabStop = 0x00010000;

constexpr std::uint32_t kShown = kChild | kVisible;
constexpr std::uint32_t kGroupBox = kShown | kGroup | 7;
constexpr std::uint32_t kAutoCheckBox = kShown | kTabStop | 3;
constexpr std::uint32_t kPushButton = kShown | kTabStop;
constexpr std::uint32_t kFirstPushButton = kPushButton | kGroup;
constexpr std::uint32_t kDisabledPushButton = kPushButton | kDisabled;
constexpr std::uint32_t kLabel = kShown | kGroup;
constexpr std::uint32_t kAutoScroll = 0x80;
constexpr std::uint32_t kEdit = kShown | kTabStop | kBorder | kAutoScroll;
constexpr std::uint32_t kDigitsOnly = 0x2000;
constexpr std::uint32_t kReadOnly = 0x800;
constexpr std::uint32_t kDropDownList = kShown | kTabStop | kVerticalScroll | 3;
constexpr std::uint32_t kNotify = 1;
constexpr std::uint32_t kSort = 2;
constexpr std::uint32_t kUseTabStops = 0x80;
constexpr std::uint32_t kAnyHeight = 0x100;
constexpr std::uint32_t kSortedList =
    kShown | kTabStop | kBorder | kVerticalScroll | kNotify | kSort | kAnyHeight;

struct ExpectedControl {
  std::uint32_t id;
  ControlKind kind;
  const char* text;
  std::uint32_t style;
};

/// In tab order.
constexpr std::array kUserTab{
    ExpectedControl{IDC_STATIC, ControlKind::kButton, "Quota", kGroupBox},
    ExpectedControl{202, ControlKind::kButton, "Use user &quota", kAutoCheckBox},
    ExpectedControl{277, ControlKind::kStatic, "Warning at", kLabel},
    ExpectedControl{203, ControlKind::kEdit, "", kEdit},
    ExpectedControl{IDC_STATIC, ControlKind::kStatic, "Mb", kLabel},
    ExpectedControl{278, ControlKind::kStatic, "Soft limit", kLabel},
    ExpectedControl{204, ControlKind::kEdit, "", kEdit},
    ExpectedControl{IDC_STATIC, ControlKind::kStatic, "Mb", kLabel},
    ExpectedControl{279, ControlKind::kStatic, "Hard limit", kLabel},
    ExpectedControl{205, ControlKind::kEdit, "", kEdit},
    ExpectedControl{IDC_STATIC, ControlKind::kStatic, "Mb", kLabel},
    ExpectedControl{IDC_STATIC, ControlKind::kButton, "Other", kGroupBox},
    ExpectedControl{214, ControlKind::kButton, "Pelora Account", kAutoCheckBox},
    ExpectedControl{284, ControlKind::kComboBox, "", kDropDownList},
    ExpectedControl{243, ControlKind::kButton, "Hide from addressbook", kAutoCheckBox},
    ExpectedControl{297, ControlKind::kStatic, "Capacity", kLabel},
    ExpectedControl{298, ControlKind::kEdit, "", kEdit | kDigitsOnly},
    ExpectedControl{266, ControlKind::kButton, "Home Server", kGroupBox},
    ExpectedControl{242, ControlKind::kEdit, "", kEdit | kReadOnly},
    ExpectedControl{271, ControlKind::kButton, "&Select", kFirstPushButton},
    ExpectedControl{247, ControlKind::kButton, "E-mail addresses", kGroupBox},
    ExpectedControl{206, ControlKind::kListBox, "", kSortedList | kUseTabStops},
    ExpectedControl{207, ControlKind::kButton, "&Add", kFirstPushButton},
    ExpectedControl{209, ControlKind::kButton, "&Modify", kDisabledPushButton},
    ExpectedControl{208, ControlKind::kButton, "&Delete", kDisabledPushButton},
    ExpectedControl{213, ControlKind::kButton, "Set as default", kDisabledPushButton},
    ExpectedControl{248, ControlKind::kButton, "Send as", kGroupBox},
    ExpectedControl{237, ControlKind::kListBox, "", kSortedList},
    ExpectedControl{238, ControlKind::kButton, "Add", kFirstPushButton},
    ExpectedControl{239, ControlKind::kButton, "Delete", kDisabledPushButton},
};

DialogTemplate UserTab() {
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  const auto dialog = file.value.value().Dialog(102);
  EXPECT_EQ(dialog.error, "");
  return dialog.value.value();
}

TEST(UserTabTemplate, IsAPageOfTheSize) {
  const DialogTemplate dialog = UserTab();
  EXPECT_EQ(dialog.title, "Pelora");
  EXPECT_EQ(dialog.width, 271);
  EXPECT_EQ(dialog.height, 228);
  // A child with a caption, disabled until its sheet shows it, with the shell's font.
  EXPECT_EQ(dialog.style, 0x48C0004CU);
  ASSERT_TRUE(dialog.font);
  EXPECT_EQ(dialog.font->face, "MS Shell Dlg");
  EXPECT_EQ(dialog.font->point_size, 8);
}

TEST(UserTabTemplate, HoldsEveryControlInTabOrder) {
  const DialogTemplate dialog = UserTab();
  ASSERT_EQ(dialog.items.size(), kUserTab.size());
  for (std::size_t index = 0; index < kUserTab.size(); ++index) {
    const DialogItem& item = dialog.items[index];
    const ExpectedControl& expected = kUserTab.at(index);
    SCOPED_TRACE("control " + std::to_string(index) + ", " + std::to_string(expected.id));
    EXPECT_EQ(item.id, expected.id);
    EXPECT_EQ(item.kind, expected.kind);
    EXPECT_EQ(item.title, expected.text);
    EXPECT_EQ(item.style, expected.style);
    EXPECT_EQ(item.extended_style, 0U);
  }
}

TEST(UserTabTemplate, HasNoMnemonicTwice) {
  std::set<char> seen;
  for (const DialogItem& item : UserTab().items) {
    const std::size_t mark = item.title.find('&');
    if (mark == std::string::npos) continue;
    const auto letter = static_cast<unsigned char>(item.title.at(mark + 1));
    EXPECT_TRUE(seen.insert(static_cast<char>(std::tolower(letter))).second) << item.title;
  }
  EXPECT_EQ(seen, (std::set<char>{'q', 's', 'a', 'm', 'd'}));
}

}  // namespace
}  // namespace pelora::resources
