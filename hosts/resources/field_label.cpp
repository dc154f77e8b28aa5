// SPDX-License-Identifier: Apache-2.0
#include "hosts/resources/field_label.h"

#include <algorithm>

#include "hosts/resources/mnemonic.h"
#include "hosts/resources/shown_text.h"

namespace pelora::resources {
namespace {

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
  return PlainLabel(TemplateText(row, dialog));
}

std::string PlainLabel(std::string_view text) {
  std::string plain = WithoutMnemonic(ShownText(text));
  if (plain.ends_with(':')) plain.pop_back();
  return plain;
}

}  // namespace pelora::resources
