// SPDX-License-Identifier: Apache-2.0
#include "tests/unit/fields/row_checks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>

#include "hosts/resources/field_label.h"

namespace pelora::testing {

using resources::ControlKind;
using resources::DialogItem;
using resources::DialogTemplate;
using resources::FieldLabel;

namespace {

std::string KindWord(FieldKind kind) {
  static constexpr std::array<const char*, 9> kWords = {
      "flag", "number", "text", "name", "server", "default", "list", "names", "choice"};
  return kWords.at(static_cast<std::size_t>(kind));
}

constexpr std::uint32_t kButtonType = 0x0F;
constexpr std::uint32_t kAutoCheckBox = 3;
constexpr std::uint32_t kGroupBox = 7;
constexpr std::uint32_t kDefaultPushButton = 1;

bool IsCheckBox(const DialogItem& item) {
  return item.kind == ControlKind::kButton && (item.style & kButtonType) == kAutoCheckBox;
}
bool IsLabel(const DialogItem& item) {
  const bool is_group =
      item.kind == ControlKind::kButton && (item.style & kButtonType) == kGroupBox;
  return item.kind == ControlKind::kStatic || is_group;
}

bool Shows(const DialogItem& item, const FieldRow& row) {
  switch (row.kind) {
    case FieldKind::kFlag:
      return IsCheckBox(item);
    case FieldKind::kNumber:
    case FieldKind::kText:
    case FieldKind::kName:
    case FieldKind::kServer:
      return item.kind == ControlKind::kEdit;
    case FieldKind::kDefaultEntry:
    case FieldKind::kList:
    case FieldKind::kNameList:
      return item.kind == (row.entry.empty() ? ControlKind::kListBox : ControlKind::kListView);
    case FieldKind::kChoice:
      return item.kind == (row.entry.empty() ? ControlKind::kComboBox : ControlKind::kListView);
  }
  return false;
}

void ExpectButtonsOf(const FieldRow& row, const DialogTemplate& dialog, const std::string& what) {
  std::vector<ControlId> buttons = {row.choose, row.remove, row.make_default};
  std::ranges::copy(row.choice_buttons, std::back_inserter(buttons));
  for (const ControlId button : buttons) {
    if (button == 0) continue;
    const DialogItem* const item = FindItem(dialog, button);
    EXPECT_TRUE(item != nullptr && IsPushButton(*item)) << what << " " << button;
  }
}

}  // namespace

std::string ToLine(const FieldRow& row, const DialogTemplate& dialog) {
  std::string line = row.name + ": " + (row.is_read_only ? "shown " : "") + KindWord(row.kind) +
                     " \"" + FieldLabel(row, dialog) + "\"";
  if (row.attributes == std::vector<std::string_view>{row.name}) return line;
  for (const std::string_view attribute : row.attributes) line += " " + std::string(attribute);
  return line;
}

const FieldRow& RowNamed(const std::vector<FieldRow>& rows, std::string_view name) {
  return *std::ranges::find(rows, name, &FieldRow::name);
}

const DialogItem* FindItem(const DialogTemplate& dialog, ControlId id) {
  if (std::ranges::count(dialog.items, id, &DialogItem::id) != 1) return nullptr;
  return &*std::ranges::find(dialog.items, id, &DialogItem::id);
}

bool IsPushButton(const DialogItem& item) {
  return item.kind == ControlKind::kButton && (item.style & kButtonType) <= kDefaultPushButton;
}

void ExpectControlsOf(const std::vector<FieldRow>& rows, const DialogTemplate& dialog,
                      std::string_view page) {
  EXPECT_FALSE(rows.empty()) << page;
  for (const FieldRow& row : rows) {
    const std::string what = std::string(page) + " " + row.name;
    const DialogItem* const control = FindItem(dialog, row.control);
    EXPECT_TRUE(control != nullptr && Shows(*control, row)) << what;
    const DialogItem* const label = FindItem(dialog, row.label);
    EXPECT_TRUE(row.label == 0 || (label != nullptr && IsLabel(*label))) << what;
    EXPECT_FALSE(FieldLabel(row, dialog).empty()) << what;
    ExpectButtonsOf(row, dialog, what);
  }
}

std::vector<ControlId> ValuesWithoutRow(const std::vector<FieldRow>& rows,
                                        const DialogTemplate& dialog) {
  std::vector<ControlId> unknown;
  for (const DialogItem& item : dialog.items) {
    using enum ControlKind;
    const bool holds_value = IsCheckBox(item) || item.kind == kEdit || item.kind == kListBox ||
                             item.kind == kComboBox || item.kind == kListView;
    const bool is_known = std::ranges::find(rows, item.id, &FieldRow::control) != rows.end();
    if (holds_value && !is_known) unknown.push_back(item.id);
  }
  return unknown;
}

}  // namespace pelora::testing
