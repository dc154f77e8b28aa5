// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/fields/page_layout.h"

#include <algorithm>

#include "hosts/resources/field_label.h"

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

}  // namespace

bool FindPlace(const resources::DialogTemplate& page, const FieldRow& row, FieldPlace& place) {
  const auto item = std::ranges::find(page.items, std::uint32_t{row.control}, &DialogItem::id);
  if (item == page.items.end()) return false;
  place.position = {item->y, item->x};
  place.group_position = place.position;
  for (const DialogItem& box : page.items) {
    if (!IsGroupBox(box) || !Holds(box, *item)) continue;
    place.group = resources::PlainLabel(box.title);
    place.group_position = {box.y, box.x};
  }
  place.label = resources::FieldLabel(row, page);
  if (place.label.empty()) place.label = row.name;
  return true;
}

}  // namespace pelora::session
