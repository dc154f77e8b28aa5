// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/dialogs/combo_box_control.h"

#include <QScopedValueRollback>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QWheelEvent>

#include "hosts/console/dialogs/control_styles.h"
#include "hosts/console/program/guarded_application.h"
#include "hosts/console/text/qt_text.h"

namespace pelora::console {
namespace {

constexpr int kNoRow = -1;

}  // namespace

DropDownList::DropDownList(QWidget* parent) : QComboBox(parent) { setFocusPolicy(Qt::StrongFocus); }

void DropDownList::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) return QComboBox::wheelEvent(event);
  event->ignore();
}

void DropDownList::paintEvent(QPaintEvent* event) {
  if (currentIndex() != kNoRow || placeholderText().isEmpty()) return QComboBox::paintEvent(event);
  DrawnOrNothing([this] {
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    option.palette.setBrush(QPalette::ButtonText, palette().placeholderText());
    option.currentText = fontMetrics().elidedText(placeholderText(), Qt::ElideRight,
                                                  room.width() - fontMetrics().averageCharWidth());
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
  });
}

ComboBoxControl::ComboBoxControl(const resources::DialogItem& item, QWidget& parent,
                                 ControlEvents& events)
    : DialogControl(item, *new DropDownList(&parent), events),
      list_(static_cast<DropDownList&>(widget())) {
  if ((item.style & style::kComboBoxSort) != 0) order_.emplace();
  // The template gives the width; longer texts are not to widen the list's own hint.
  list_.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  QObject::connect(&list_, &QComboBox::currentIndexChanged, &list_, [this] {
    if (!changing_) Notify(ControlNotification::kSelectionChange);
  });
}

QSize ComboBoxControl::NeededSize() const { return {0, list_.minimumSizeHint().height()}; }

std::string ComboBoxControl::Text() const { return ToUtf8(list_.currentText()); }

void ComboBoxControl::Add(std::string_view text) {
  const QScopedValueRollback changing(changing_, true);
  const QString shown = ToQString(text);
  int row = list_.count();
  while (order_ && row > 0 && order_->IsBefore(shown, list_.itemText(row - 1))) --row;
  const bool had_selection = list_.currentIndex() != kNoRow;
  list_.insertItem(row, shown);
  // The widget selects the first row that comes; a program has to say so here.
  if (!had_selection) list_.setCurrentIndex(kNoRow);
}

void ComboBoxControl::Clear() {
  const QScopedValueRollback changing(changing_, true);
  list_.clear();
}

RowIndex ComboBoxControl::Count() const { return static_cast<RowIndex>(list_.count()); }

std::string ComboBoxControl::Text(RowIndex row) const {
  return row < Count() ? ToUtf8(list_.itemText(static_cast<int>(row))) : std::string();
}

std::optional<RowIndex> ComboBoxControl::Selection() const {
  if (list_.currentIndex() == kNoRow) return std::nullopt;
  return static_cast<RowIndex>(list_.currentIndex());
}

void ComboBoxControl::Select(std::optional<RowIndex> row) {
  const QScopedValueRollback changing(changing_, true);
  list_.setCurrentIndex(row && *row < Count() ? static_cast<int>(*row) : kNoRow);
}

}  // namespace pelora::console
