// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/dialog_layout.h"

#include <QStyle>
#include <algorithm>

#include "hosts/console/dialogs/accessible_names.h"
#include "hosts/console/dialogs/mnemonics.h"
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

double TimesGiven(int needed, int given) {
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

void GiveKeys(const DialogControls& controls, const QString& taken) {
  QStringList captions;
  std::vector<DialogControl*> bearers;
  for (const auto& control : controls) {
    const QString caption = control->Caption();
    if (caption.isEmpty()) continue;
    captions.append(caption);
    bearers.push_back(control.get());
  }
  const QStringList marked = WithMnemonics(captions, taken);
  for (std::size_t at = 0; at < bearers.size(); ++at) {
    bearers[at]->ShowCaption(marked[static_cast<qsizetype>(at)]);
  }
}

DialogUnits FittingUnits(const DialogTemplate& dialog, const DialogControls& controls,
                         const QFont& font) {
  DialogUnits units = UnitsOfFont(QFontMetrics(font));
  double across = 1;
  double down = 1;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const QSize needed = controls[i]->NeededSize();
    const QRect given = units.ToPixels(ShownItem(dialog.items[i]));
    across = std::max(across, TimesGiven(needed.width(), given.width()));
    down = std::max(down, TimesGiven(needed.height(), given.height()));
  }
  units.base_x *= std::min(across, kMostGrowth);
  units.base_y *= std::min(down, kMostGrowth);
  return units;
}

DialogLayout::DialogLayout(const DialogTemplate& dialog, const DialogControls& controls,
                           const DialogUnits& units)
    : controls_(controls), size_(units.SizeOf(dialog)) {
  std::vector<QWidget*> frames;
  for (std::size_t i = 0; i < controls.size(); ++i) {
    const Stretching stretching = controls[i]->stretching();
    stretchables_.push_back({.place = units.ToPixels(ShownItem(dialog.items[i])),
                             .across = stretching.across,
                             .down = stretching.down,
                             .is_frame = stretching.is_frame});
    controls[i]->widget().setGeometry(stretchables_.back().place);
    if (stretching.is_frame) frames.push_back(&controls[i]->widget());
  }
  const auto area = [](const QWidget* widget) { return widget->width() * widget->height(); };
  std::ranges::sort(frames, {}, area);
  for (QWidget* frame : frames) frame->lower();
}

void DialogLayout::Place(QSize size, Qt::LayoutDirection direction) const {
  const QRect room(QPoint(0, 0), size.expandedTo(size_));
  const std::vector<QRect> places =
      Stretched(stretchables_, QRect(QPoint(0, 0), size_), room.size() - size_);
  for (std::size_t i = 0; i < places.size(); ++i) {
    controls_[i]->widget().setGeometry(QStyle::visualRect(direction, room, places[i]));
  }
}

void ConnectControls(const DialogTemplate& dialog, const DialogControls& controls,
                     const QString& taken_keys) {
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
  GiveKeys(controls, taken_keys);
}

}  // namespace pelora::console
