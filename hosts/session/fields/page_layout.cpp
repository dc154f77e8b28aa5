// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/fields/page_layout.h"

#include <algorithm>

namespace pelora::session {
namespace {

using resources::ControlKind;
using resources::DialogItem;

constexpr std::uint32_t kButtonTypeMask = 0xF;
constexpr std::uint32_t kGroupBox = 7;

bool IsGroupBox(const DialogItem& item) {
  return item.kind == ControlKind::kButton && (item.style & kButtonTypeMask) == kGroupBox;
}

bool Holds(const DialogItem& box, const DialogItem& item) {
  return item.x >= box.x && item.y >= box.y && item.x < box.x + box.width &&
         item.y < box.y + box.height;
}

/// A text without its mnemonic mark and the colon behind it.
std::string Plain(const std::string& text) {
  std::string plain;
  for (std::size_t place = 0; place < text.size(); ++place) {
    if (text[place] == '&' && place + 1 < text.size()) ++place;
    plain += text[place];
  }
  if (plain.ends_with(':')) plain.pop_back();
  return plain;
}

const DialogItem* Find(const resources::DialogTemplate& page, ControlId id) {
  const auto found = std::ranges::find(page.items, std::uint32_t{id}, &DialogItem::id);
  return found == page.items.end() ? nullptr : &*found;
}

/// The static text right before an item, in tab order; null when there is none.
const DialogItem* StaticBefore(const resources::DialogTemplate& page, const DialogItem& item) {
  if (&item == page.items.data()) return nullptr;
  const DialogItem* before = &item - 1;
  return before->kind == ControlKind::kStatic ? before : nullptr;
}

std::string LabelOf(const resources::DialogTemplate& page, const FieldRow& row,
                    const DialogItem& item) {
  if (!row.title.empty()) return std::string(row.title);
  if (!row.entry.empty()) return std::string(row.entry);
  const DialogItem* label = row.label == 0 ? nullptr : Find(page, row.label);
  if (row.label == 0) {
    label = item.kind == ControlKind::kButton ? &item : StaticBefore(page, item);
  }
  return label == nullptr ? row.name : Plain(label->title);
}

}  // namespace

bool FindPlace(const resources::DialogTemplate& page, const FieldRow& row, FieldPlace& place) {
  const DialogItem* item = Find(page, row.control);
  if (item == nullptr) return false;
  place.position = {item->y, item->x};
  place.group_position = place.position;
  for (const DialogItem& box : page.items) {
    if (!IsGroupBox(box) || !Holds(box, *item)) continue;
    place.group = Plain(box.title);
    place.group_position = {box.y, box.x};
  }
  place.label = LabelOf(page, row, *item);
  return true;
}

}  // namespace pelora::session
