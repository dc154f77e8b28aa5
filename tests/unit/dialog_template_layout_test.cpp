// SPDX-License-Identifier: Apache-2.0
// What every dialog of the module owes the eye: controls that lie inside it, beside one another,
// and are large enough for what they say.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "hosts/resources/resource_file.h"

namespace pelora::resources {
namespace {

constexpr std::uint32_t kButtonTypeMask = 0xF;
constexpr std::uint32_t kLastPushButtonType = 1;
constexpr std::uint32_t kGroupBoxType = 7;
constexpr int kClosedDropDownHeight = 14;

struct Rectangle {
  int left;
  int top;
  int right;
  int bottom;
};

bool IsGroupBox(const DialogItem& item) {
  return item.kind == ControlKind::kButton && (item.style & kButtonTypeMask) == kGroupBoxType;
}

bool IsRule(const DialogItem& item) {
  constexpr std::uint32_t kStaticTypeMask = 0x1F;
  constexpr std::uint32_t kHorizontalRule = 0x10;
  return item.kind == ControlKind::kStatic && (item.style & kStaticTypeMask) == kHorizontalRule;
}

/// Where a control is seen; a drop-down list's height in the template is that of the open list.
Rectangle Seen(const DialogItem& item) {
  const int height = item.kind == ControlKind::kComboBox ? kClosedDropDownHeight : item.height;
  return {item.x, item.y, item.x + item.width, item.y + height};
}

bool Overlap(const Rectangle& one, const Rectangle& other) {
  return one.left < other.right && other.left < one.right && one.top < other.bottom &&
         other.top < one.bottom;
}

/// Inside a group box: below its caption and clear of its frame.
bool LiesInGroup(const Rectangle& inner, const Rectangle& group) {
  constexpr int kCaption = 8;
  constexpr int kFrame = 3;
  return inner.left >= group.left + kFrame && inner.right <= group.right - kFrame &&
         inner.top >= group.top + kCaption && inner.bottom <= group.bottom - kFrame;
}

/// Room in pixels that a control's own marks take beside its text.
int RoomForMarks(const DialogItem& item) {
  if (item.kind == ControlKind::kStatic) return 0;
  if (IsGroupBox(item)) return 20;
  return (item.style & kButtonTypeMask) <= kLastPushButtonType ? 12 : 18;
}

/// Width in pixels of a text in the dialogs' font, generously.
int TextWidth(const std::string& text) {
  constexpr int kPixelsPerCharacter = 5;
  return kPixelsPerCharacter * static_cast<int>(text.size() - std::ranges::count(text, '&'));
}

/// Least height of a control of the kind, in dialog units.
int LeastHeight(const DialogItem& item) {
  constexpr int kLine = 8;
  constexpr int kRule = 1;
  constexpr int kCheckBox = 10;
  constexpr int kField = 14;
  if (IsGroupBox(item)) return 2 * kField;
  if (item.kind == ControlKind::kStatic) return IsRule(item) ? kRule : kLine;
  if (item.kind == ControlKind::kButton && (item.style & kButtonTypeMask) > kLastPushButtonType) {
    return kCheckBox;
  }
  return kField;
}

std::string Name(const DialogItem& item) {
  return std::to_string(item.id) + " \"" + item.title + "\" at " + std::to_string(item.x) + ", " +
         std::to_string(item.y);
}

/// What is wrong with the layout, one line each.
std::vector<std::string> Faults(const DialogTemplate& dialog) {
  std::vector<std::string> faults;
  for (const DialogItem& item : dialog.items) {
    const Rectangle seen = Seen(item);
    if (seen.left < 0 || seen.top < 0 || seen.right > dialog.width || seen.bottom > dialog.height) {
      faults.push_back(Name(item) + " leaves the dialog");
    }
    if (TextWidth(item.title) + RoomForMarks(item) > item.width * 6 / 4) {
      faults.push_back(Name(item) + " is too narrow for its text");
    }
    if (item.height < LeastHeight(item)) faults.push_back(Name(item) + " is too low");
  }
  for (auto one = dialog.items.begin(); one != dialog.items.end(); ++one) {
    for (auto other = one + 1; other != dialog.items.end(); ++other) {
      if (!Overlap(Seen(*one), Seen(*other))) continue;
      if (IsGroupBox(*one) && LiesInGroup(Seen(*other), Seen(*one))) continue;
      if (IsGroupBox(*other) && LiesInGroup(Seen(*one), Seen(*other))) continue;
      faults.push_back(Name(*one) + " collides with " + Name(*other));
    }
  }
  return faults;
}

TEST(DialogLayout, EveryDialogOfTheModuleIsSound) {
  const auto file = ResourceFile::Read(EmbeddedResourceBytes());
  ASSERT_TRUE(file.value) << file.error;
  int dialogs = 0;
  for (const Resource& resource : file.value->resources()) {
    if (resource.type != ResourceName(kDialogType)) continue;
    SCOPED_TRACE("dialog " + std::to_string(std::get<std::uint16_t>(resource.name)));
    const auto dialog = ReadDialogTemplate(resource.data);
    ASSERT_TRUE(dialog.value) << dialog.error;
    EXPECT_THAT(Faults(*dialog.value), testing::IsEmpty());
    ++dialogs;
  }
  EXPECT_GE(dialogs, 2);
}

DialogItem Label(std::int16_t x, std::int16_t y, std::int16_t width, std::int16_t height) {
  DialogItem item;
  item.kind = ControlKind::kStatic;
  item.title = "Text";
  item.x = x;
  item.y = y;
  item.width = width;
  item.height = height;
  return item;
}

TEST(DialogLayout, FaultsAreSeen) {
  DialogTemplate dialog;
  dialog.width = 100;
  dialog.height = 50;
  dialog.items = {Label(0, 0, 20, 8), Label(20, 0, 20, 8)};
  EXPECT_THAT(Faults(dialog), testing::IsEmpty());
  dialog.items = {Label(0, 0, 21, 8), Label(20, 0, 20, 8)};
  EXPECT_THAT(Faults(dialog), testing::ElementsAre("0 \"Text\" at 0, 0 collides with "
                                                   "0 \"Text\" at 20, 0"));
  dialog.items = {Label(81, 0, 20, 8)};
  EXPECT_THAT(Faults(dialog), testing::ElementsAre("0 \"Text\" at 81, 0 leaves the dialog"));
  dialog.items = {Label(0, 0, 13, 8)};
  EXPECT_THAT(Faults(dialog),
              testing::ElementsAre("0 \"Text\" at 0, 0 is too narrow for its text"));
  dialog.items = {Label(0, 0, 20, 7)};
  EXPECT_THAT(Faults(dialog), testing::ElementsAre("0 \"Text\" at 0, 0 is too low"));
}

}  // namespace
}  // namespace pelora::resources
