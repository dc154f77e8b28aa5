// SPDX-License-Identifier: Apache-2.0
#include "hosts/resources/field_label.h"

#include <algorithm>

namespace pelora::resources {
namespace {

/// "&&" is one "&" that is shown.
std::string WithoutMnemonic(const std::string& text) {
  std::string plain;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '&' && ++at == text.size()) break;
    plain += text[at];
  }
  if (plain.ends_with(':')) plain.pop_back();
  return plain;
}

std::string TemplateText(const FieldRow& row, const DialogTemplate& dialog) {
  const ControlId named = row.label != 0 ? row.label : row.control;
  const auto item = std::ranges::find(dialog.items, named, &DialogItem::id);
  if (item == dialog.items.end()) return {};
  if (row.label != 0 || item->kind == ControlKind::kButton) return item->title;
  if (item == dialog.items.begin()) return {};
  const DialogItem& before = *std::prev(item);
  return before.kind == ControlKind::kStatic ? before.title : std::string();
}

}  // namespace

std::string FieldLabel(const FieldRow& row, const DialogTemplate& dialog) {
  if (!row.entry.empty()) return std::string(row.entry);
  if (!row.title.empty()) return std::string(row.title);
  return WithoutMnemonic(TemplateText(row, dialog));
}

}  // namespace pelora::resources
