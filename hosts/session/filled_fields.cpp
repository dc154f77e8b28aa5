// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/filled_fields.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "directory/attribute_catalogue.h"
#include "hosts/session/fields/page_layout.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

/// The value of a field's control; nothing for one that cannot be used, is empty, or is a list.
std::optional<std::string> ValueOf(const FieldRow& row, IDialog& dialog) {
  // Some that are filled by a chooser are never typed into.
  const bool is_chosen = row.choose != 0 && dialog.IsEnabled(row.choose);
  if (!dialog.IsEnabled(row.control) && !is_chosen) return std::nullopt;
  std::string text;
  switch (row.kind) {
    case FieldKind::kFlag:
      if (dialog.Check(row.control) == CheckState::kChecked) text = "yes";
      break;
    case FieldKind::kChoice: {
      const IComboBox& list = dialog.ComboBox(row.control);
      if (const std::optional<RowIndex> chosen = list.Selection()) text = list.Text(*chosen);
      break;
    }
    case FieldKind::kList:
    case FieldKind::kNameList:
    case FieldKind::kDefaultEntry:
      break;
    default:
      text = Trimmed(dialog.Text(row.control));
  }
  return text.empty() ? std::nullopt : std::optional(std::move(text));
}

bool IsTyped(const FieldRow& row) {
  return row.kind == FieldKind::kText || row.kind == FieldKind::kNumber ||
         row.kind == FieldKind::kName || row.kind == FieldKind::kServer;
}

std::string LabelOf(const FieldRow& row, const resources::DialogTemplate& page) {
  FieldPlace place;
  return FindPlace(page, row, place) && !place.label.empty() ? place.label : row.name;
}

}  // namespace

bool IsPageWanted(const std::vector<FieldRow>& rows, const IDialog& dialog) {
  constexpr std::string_view kBox = CatalogueEntry("peloraAccount").name;
  const auto box = std::ranges::find_if(
      rows, [&](const FieldRow& row) { return row.attributes.front() == kBox; });
  return box == rows.end() || dialog.Check(box->control) == CheckState::kChecked;
}

std::vector<std::string> FilledFields(const std::vector<FieldRow>& rows,
                                      const resources::DialogTemplate& page, IDialog& dialog) {
  std::vector<std::string> lines;
  for (const FieldRow& row : rows) {
    if (const std::optional<std::string> value = ValueOf(row, dialog)) {
      lines.push_back(LabelOf(row, page) + ": " + *value);
    }
  }
  return lines;
}

std::string WhatIsMissing(const std::vector<FieldRow>& rows, const resources::DialogTemplate& page,
                          IDialog& dialog) {
  std::string empty;
  for (const FieldRow& row : rows) {
    const bool is_empty =
        IsTyped(row) && dialog.IsEnabled(row.control) && !ValueOf(row, dialog).has_value();
    if (!is_empty) continue;
    if (!row.missing.empty()) return std::string(row.missing) + ".";
    empty += (empty.empty() ? "Missing: " : ", ") + LabelOf(row, page);
  }
  return empty.empty() ? empty : empty + ".";
}

}  // namespace pelora::session
