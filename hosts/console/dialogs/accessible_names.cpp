// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/accessible_names.h"

#include <QMap>
#include <QRect>
#include <algorithm>
#include <array>

#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/text/qt_text.h"
#include "resources/resource.h"

namespace pelora::console {
namespace {

using resources::ControlKind;
using resources::DialogItem;
using resources::DialogTemplate;

constexpr int kNone = -1;

/// A control that no template labels, and what it is called all the same.
struct UnlabelledControl {
  std::uint32_t id;
  const char* name;
};

constexpr std::array kUnlabelledControls = {
    UnlabelledControl{IDC_ACCOUNT_TYPE, "Account type"},
    UnlabelledControl{IDC_FEATURE_LIST, "Features"},
    UnlabelledControl{IDC_ARCHIVER_NAME, "Server name"},
};

bool IsGroup(const DialogItem& item) {
  return item.kind == ControlKind::kButton &&
         (item.style & style::kButtonTypeMask) == style::kGroupBox;
}

/// Whether the administrator can do something with the control and its text, if it has one, is what
/// it contains and not what it is called.
bool NeedsLabel(const DialogItem& item) {
  switch (item.kind) {
    case ControlKind::kEdit:
    case ControlKind::kListBox:
    case ControlKind::kComboBox:
    case ControlKind::kListView:
      return true;
    default:
      return false;
  }
}

QRect PlaceOf(const DialogItem& item) { return {item.x, item.y, item.width, item.height}; }

/// Title of the smallest group box around a control.
QString GroupNameOf(const DialogTemplate& dialog, const DialogItem& member) {
  const DialogItem* smallest = nullptr;
  const auto area = [](const DialogItem& item) { return int{item.width} * int{item.height}; };
  for (const DialogItem& item : dialog.items) {
    if (!IsGroup(item) || !PlaceOf(item).contains(QPoint(member.x, member.y))) continue;
    if (smallest == nullptr || area(item) < area(*smallest)) smallest = &item;
  }
  return smallest != nullptr ? WithoutMnemonic(ToQString(smallest->title)) : QString();
}

QString PlainName(const DialogTemplate& dialog, int row) {
  const DialogItem& item = dialog.items[static_cast<std::size_t>(row)];
  if (item.kind == ControlKind::kButton) return WithoutMnemonic(ToQString(item.title));
  if (!NeedsLabel(item)) return {};
  const auto* unlabelled = std::ranges::find(kUnlabelledControls, item.id, &UnlabelledControl::id);
  if (unlabelled != kUnlabelledControls.end()) return QString::fromLatin1(unlabelled->name);
  const int label = LabelOf(dialog, row);
  if (label == kNone) return GroupNameOf(dialog, item);
  return WithoutMnemonic(ToQString(dialog.items[static_cast<std::size_t>(label)].title));
}

}  // namespace

int LabelOf(const DialogTemplate& dialog, int item) {
  if (item == 0) return kNone;
  const DialogItem& control = dialog.items[static_cast<std::size_t>(item)];
  const DialogItem& before = dialog.items[static_cast<std::size_t>(item) - 1];
  if (!NeedsLabel(control) || before.kind != ControlKind::kStatic || before.title.empty()) {
    return kNone;
  }
  // A unit behind one field is no label of the next: a label stands to the left or above.
  const bool left = before.x + before.width <= control.x && before.y < control.y + control.height;
  const bool above = before.y < control.y;
  return left || above ? item - 1 : kNone;
}

QStringList AccessibleNames(const DialogTemplate& dialog) {
  QStringList names;
  QMap<QString, int> uses;
  const int count = static_cast<int>(dialog.items.size());
  for (int row = 0; row < count; ++row) {
    names += PlainName(dialog, row);
    const DialogItem& item = dialog.items[static_cast<std::size_t>(row)];
    if (!IsGroup(item) && !names.back().isEmpty()) ++uses[names.back().toCaseFolded()];
  }
  for (int row = 0; row < count; ++row) {
    const DialogItem& item = dialog.items[static_cast<std::size_t>(row)];
    if (IsGroup(item) || uses.value(names[row].toCaseFolded()) < 2) continue;
    const QString group = GroupNameOf(dialog, item);
    if (!group.isEmpty()) names[row] = group + QStringLiteral(": ") + names[row];
  }
  return names;
}

}  // namespace pelora::console
