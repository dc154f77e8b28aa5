// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/feature_counts.h"

#include <algorithm>

namespace pelora::session {
namespace {

/// The lists in which features stand that are on, and off.
constexpr std::size_t kOnList = 0;
constexpr std::size_t kOffList = 1;

bool Has(const std::vector<std::string>& features, std::string_view name) {
  return std::ranges::find(features, name) != features.end();
}

void AddCount(std::string& text, std::size_t count, const char* word) {
  if (count == 0) return;
  text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + word;
}

bool IsSelected(const PageFields& fields, const FieldRow& row) {
  const IListView& list = fields.dialog->ListView(row.control);
  for (RowIndex at = 0; at < list.RowCount(); ++at) {
    if (list.IsSelected(at) && list.Text(at, 0) == row.entry) return true;
  }
  return false;
}

}  // namespace

bool IsSwitch(const FieldRow& row) {
  const auto buttons =
      std::ranges::count_if(row.choice_buttons, [](ControlId button) { return button != 0; });
  return row.kind == FieldKind::kChoice && !row.entry.empty() && row.attributes.size() == 2 &&
         buttons == 2;
}

FeatureCounts CountsOf(const PageFields& fields, std::size_t field) {
  if (field >= fields.gathered.size()) return {};
  return fields.gathered[field].counts;
}

void CountSwitch(const PageFields& fields, std::size_t field, const DirectoryObject& object,
                 FeatureCounts& counts) {
  const FieldRow& row = fields.touched.Row(field);
  const bool is_on = Has(fields.seen(object, row.attributes[kOnList]), row.entry);
  const bool is_off = Has(fields.seen(object, row.attributes[kOffList]), row.entry);
  ++(is_on == is_off ? counts.unset : (is_on ? counts.on : counts.off));
}

std::string CountsText(const FeatureCounts& counts) {
  std::string text;
  AddCount(text, counts.on, "on");
  AddCount(text, counts.off, "off");
  AddCount(text, counts.unset, "unset");
  return text;
}

void SwitchForAll(PageFields& fields, ControlId button) {
  if (button == 0 || !fields.IsShown() || fields.selection.size() < 2) return;
  ControlId opposite = 0;
  for (std::size_t field = 0; field < fields.touched.Count(); ++field) {
    const FieldRow& row = fields.touched.Row(field);
    if (!IsSwitch(row)) continue;
    if (std::ranges::find(row.choice_buttons, button) == row.choice_buttons.end()) continue;
    for (const ControlId other : row.choice_buttons) {
      if (other != 0 && other != button) opposite = other;
    }
    if (IsSelected(fields, row)) fields.touched.ChooseForAll(field);
  }
  if (opposite != 0) (void)fields.page->OnCommand(opposite, ControlNotification::kClicked);
}

}  // namespace pelora::session
