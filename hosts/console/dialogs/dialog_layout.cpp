// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/dialog_layout.h"

#include <algorithm>

#include "hosts/console/dialogs/accessible_names.h"
#include "hosts/console/dialogs/static_controls.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

using resources::ControlKind;
using resources::DialogItem;
using resources::DialogTemplate;

constexpr double kMostGrowth = 1.5;
/// Height of a drop-down list that is not dropped; the template gives that of the dropped one.
constexpr int kClosedComboBoxHeight = 14;

DialogItem ShownItem(const DialogItem& item) {
  DialogItem shown = item;
  if (item.kind == ControlKind::kComboBox) shown.height = kClosedComboBoxHeight;
  return shown;
}

double Growth(int needed, int given) {
  return given > 0 ? static_cast<double>(needed) / given : 1.0;
}

/// A drop-down list tells screen readers its choice where others tell their name; it is called by
/// the label that belongs to it. One that the template labels not gets a label nobody sees.
void AddUnseenLabel(QWidget& list, const QString& name) {
  auto* label = new QLabel(AsPlainLabel(name), list.parentWidget());
  label->setObjectName(QStringLiteral("label_of_") + list.objectName());
  label->setBuddy(&list);
  label->hide();
}

}  // namespace

DialogUnits FittingUnits(const DialogTemplate& dialog, const DialogControls& controls,
                         const QFont& font) {
  DialogUnits units = UnitsOfFont(QFontMetrics(font));
  double across = 1;
  double down = 1;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const QSize needed = controls[i]->NeededSize();
    const QRect given = units.ToPixels(ShownItem(dialog.items[i]));
    across = std::max(across, Growth(needed.width(), given.width()));
    down = std::max(down, Growth(needed.height(), given.height()));
  }
  units.base_x *= std::min(across, kMostGrowth);
  units.base_y *= std::min(down, kMostGrowth);
  return units;
}

void PlaceControls(const DialogTemplate& dialog, const DialogControls& controls,
                   const DialogUnits& units) {
  std::vector<QWidget*> groups;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    QWidget& widget = controls[i]->widget();
    widget.setGeometry(units.ToPixels(ShownItem(dialog.items[i])));
    if (dynamic_cast<const GroupControl*>(controls[i].get()) != nullptr) groups.push_back(&widget);
  }
  const auto area = [](const QWidget* widget) { return widget->width() * widget->height(); };
  std::ranges::sort(groups, {}, area);
  for (QWidget* group : groups) group->lower();
}

void ConnectControls(const DialogTemplate& dialog, const DialogControls& controls) {
  const QStringList names = AccessibleNames(dialog);
  for (std::size_t i = 0; i < controls.size(); ++i) {
    QWidget& widget = controls[i]->widget();
    const QString& name = names[static_cast<qsizetype>(i)];
    if (!name.isEmpty()) widget.setAccessibleName(name);
    DialogControl* before = i > 0 ? controls[i - 1].get() : nullptr;
    if (auto* group = dynamic_cast<GroupControl*>(before)) group->SetNext(widget);
    auto* label = dynamic_cast<LabelControl*>(before);
    if (label != nullptr && widget.focusPolicy() != Qt::NoFocus) {
      label->SetBuddy(widget);
    } else if (dialog.items[i].kind == ControlKind::kComboBox) {
      AddUnseenLabel(widget, name);
    }
  }
}

}  // namespace pelora::console
