// SPDX-License-Identifier: Apache-2.0
#include "tests/ui/faults_of_sight.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QStyle>

#include "hosts/console/text/qt_text.h"

namespace pelora::test {
namespace {

using console::ToUtf8;

QString TextOf(const QWidget& control) {
  if (const auto* button = qobject_cast<const QAbstractButton*>(&control)) return button->text();
  if (const auto* label = qobject_cast<const QLabel*>(&control)) return label->text();
  if (const auto* group = qobject_cast<const QGroupBox*>(&control)) return group->title();
  return {};
}

/// Room that a control keeps from its text: the mark of a check box, the edge of a button, the
/// corners of a frame.
int ReservedWidth(const QWidget& control) {
  const QStyle& style = *control.style();
  if (qobject_cast<const QCheckBox*>(&control) != nullptr) {
    return style.pixelMetric(QStyle::PM_IndicatorWidth) +
           style.pixelMetric(QStyle::PM_CheckBoxLabelSpacing);
  }
  if (qobject_cast<const QGroupBox*>(&control) != nullptr) return 16;
  return qobject_cast<const QLabel*>(&control) != nullptr ? 0 : 8;
}

/// Room that a text takes in a control, over several lines where its control breaks them.
QSize RoomOf(const QString& text, const QWidget& control) {
  const auto* label = qobject_cast<const QLabel*>(&control);
  if (label == nullptr || !label->wordWrap()) {
    return control.fontMetrics().size(Qt::TextShowMnemonic, text);
  }
  const QRect lines(0, 0, control.width(), QWIDGETSIZE_MAX);
  return control.fontMetrics().boundingRect(lines, Qt::TextWordWrap, text).size();
}

bool IsFrame(const QWidget& control) { return qobject_cast<const QGroupBox*>(&control) != nullptr; }

std::string NameOf(const QWidget& control) {
  return ToUtf8(control.objectName() + QStringLiteral(" \"") + TextOf(control) +
                QStringLiteral("\""));
}

std::vector<const QWidget*> ShownControls(const QWidget& page) {
  std::vector<const QWidget*> controls;
  for (const auto* control : page.findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
    if (!control->isHidden()) controls.push_back(control);
  }
  return controls;
}

}  // namespace

std::vector<std::string> FaultsOfSight(const QWidget& page) {
  std::vector<std::string> faults;
  const std::vector<const QWidget*> controls = ShownControls(page);
  for (const QWidget* control : controls) {
    if (!page.rect().contains(control->geometry())) {
      faults.push_back(NameOf(*control) + " reaches over the edge");
    }
    const QString text = TextOf(*control);
    if (text.isEmpty()) continue;
    const QSize size = RoomOf(text, *control);
    if (size.width() + ReservedWidth(*control) > control->width() ||
        size.height() > control->height()) {
      faults.push_back(NameOf(*control) + " has too much text");
    }
  }
  for (auto one = controls.begin(); one != controls.end(); ++one) {
    for (auto other = one + 1; other != controls.end(); ++other) {
      if (IsFrame(**one) || IsFrame(**other)) continue;
      if ((*one)->geometry().intersects((*other)->geometry())) {
        faults.push_back(NameOf(**one) + " overlaps " + NameOf(**other));
      }
    }
  }
  return faults;
}

}  // namespace pelora::test
