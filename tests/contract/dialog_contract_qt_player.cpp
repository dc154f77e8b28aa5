// SPDX-License-Identifier: Apache-2.0
#include "tests/contract/dialog_contract_qt_player.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QTest>
#include <QTreeWidget>

#include "hosts/console/text/qt_text.h"

namespace pelora::contract {
namespace {

using console::ToQString;

void PressKey(QWidget& widget, Qt::Key key, const QString& text = {}) {
  QTest::sendKeyEvent(QTest::Click, &widget, key, text, Qt::NoModifier);
}

/// Where a hand clicks to hit a cell, or the empty space below or beside when there is none such.
QPoint PlaceOf(const QAbstractItemView& view, RowIndex row, std::size_t column) {
  const QModelIndex first = view.model()->index(static_cast<int>(row), 0);
  if (!first.isValid()) return {view.viewport()->width() / 2, view.viewport()->height() - 2};
  const QModelIndex cell = first.siblingAtColumn(static_cast<int>(column));
  if (!cell.isValid()) return {view.viewport()->width() - 2, view.visualRect(first).center().y()};
  return view.visualRect(cell).center();
}

/// A click and the double click that follows it.
void DoubleClick(QTreeWidget& view, Qt::MouseButton button, QPoint place) {
  QTest::mouseClick(view.viewport(), button, Qt::NoModifier, place);
  QTest::mouseDClick(view.viewport(), button, Qt::NoModifier, place);
}

}  // namespace

template <class Widget>
Widget* QtPlayer::Find(ControlId id) const {
  if (!root_) return nullptr;
  auto* found = root_->findChild<Widget*>(QStringLiteral("control_%1").arg(id));
  return found != nullptr && found->isVisible() && found->isEnabled() ? found : nullptr;
}

void QtPlayer::Type(ControlId id, std::string_view text) {
  auto* edit = Find<QLineEdit>(id);
  if (edit == nullptr) return;
  edit->setFocus();
  edit->end(false);
  for (const char32_t character : ToQString(text).toUcs4()) {
    PressKey(*edit, Qt::Key_unknown, QString::fromUcs4(&character, 1));
  }
}

void QtPlayer::Erase(ControlId id) {
  auto* edit = Find<QLineEdit>(id);
  if (edit == nullptr) return;
  edit->setFocus();
  edit->selectAll();
  PressKey(*edit, Qt::Key_Delete);
}

void QtPlayer::Click(ControlId id) {
  auto* button = Find<QAbstractButton>(id);
  if (button == nullptr) return;
  // A check box reacts where its mark and its text are.
  constexpr int kInsideMark = 8;
  QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, {kInsideMark, button->height() / 2});
}

void QtPlayer::ClickListRow(ControlId id, RowIndex row) {
  auto* list = Find<QListWidget>(id);
  if (list == nullptr) return;
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, PlaceOf(*list, row, 0));
}

void QtPlayer::ChooseComboRow(ControlId id, RowIndex row) {
  auto* combo = Find<QComboBox>(id);
  if (combo == nullptr) return;
  combo->setFocus();
  combo->showPopup();
  QAbstractItemView* rows = combo->view();
  rows->setCurrentIndex(combo->model()->index(static_cast<int>(row), 0));
  PressKey(*rows, Qt::Key_Return);
}

void QtPlayer::ClickListViewCell(ControlId id, RowIndex row, std::size_t column, bool add) {
  auto* view = Find<QTreeWidget>(id);
  if (view == nullptr) return;
  QTest::mouseClick(view->viewport(), Qt::LeftButton, add ? Qt::ControlModifier : Qt::NoModifier,
                    PlaceOf(*view, row, column));
}

void QtPlayer::DoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) {
  auto* view = Find<QTreeWidget>(id);
  if (view == nullptr) return;
  DoubleClick(*view, Qt::LeftButton, PlaceOf(*view, row, column));
}

void QtPlayer::RightDoubleClickListViewCell(ControlId id, RowIndex row, std::size_t column) {
  auto* view = Find<QTreeWidget>(id);
  if (view == nullptr) return;
  DoubleClick(*view, Qt::RightButton, PlaceOf(*view, row, column));
}

void QtPlayer::ClickListViewHead(ControlId id, std::size_t column) {
  const auto* view = Find<QTreeWidget>(id);
  if (view == nullptr) return;
  const QHeaderView& head = *view->header();
  const int section = static_cast<int>(column);
  const QPoint place{head.sectionViewportPosition(section) + head.sectionSize(section) / 2,
                     head.height() / 2};
  QTest::mouseClick(head.viewport(), Qt::LeftButton, Qt::NoModifier, place);
}

void QtPlayer::PressEnter() {
  if (!root_) return;
  auto* edit = root_->findChild<QLineEdit*>();
  if (edit == nullptr) return;
  edit->setFocus();
  PressKey(*edit, Qt::Key_Return);
}

void QtPlayer::CloseWindow() {
  if (root_) root_->window()->close();
}

std::string QtPlayer::TextOf(ControlId id) {
  const auto* edit = Find<QLineEdit>(id);
  return edit != nullptr ? console::ToUtf8(edit->text()) : std::string();
}

std::vector<std::string> QtPlayer::RowsOf(ControlId id) {
  std::vector<std::string> rows;
  const auto* list = Find<QListWidget>(id);
  for (int row = 0; list != nullptr && row < list->count(); ++row) {
    rows.push_back(console::ToUtf8(list->item(row)->text()));
  }
  return rows;
}

TextRole QtPlayer::DrawnRole(ControlId id, RowIndex row, std::size_t column) {
  auto* view = Find<QTreeWidget>(id);
  if (view == nullptr) return TextRole::kNormal;
  const QModelIndex cell = view->model()->index(static_cast<int>(row), static_cast<int>(column));
  // Without the frame that a row has when it is pointed at or current.
  constexpr int kFrame = 2;
  const QRect inside = view->visualRect(cell).adjusted(kFrame, kFrame, -kFrame, -kFrame);
  const QImage drawn = view->viewport()->grab(inside).toImage();
  // Text is the darkest there is in a cell on a light ground; muted text is light grey.
  int darkest = 255;
  for (int y = 0; y < drawn.height(); ++y) {
    for (int x = 0; x < drawn.width(); ++x) darkest = qMin(darkest, qGray(drawn.pixel(x, y)));
  }
  // A row that is pointed at has a veil over its text.
  constexpr int kLightGrey = 170;
  constexpr int kGround = 240;
  EXPECT_LT(darkest, kGround) << "the cell is empty";
  return darkest >= kLightGrey ? TextRole::kMuted : TextRole::kNormal;
}

bool QtPlayer::IsDrawnSelected(ControlId id, RowIndex row) {
  auto* view = Find<QTreeWidget>(id);
  if (view == nullptr) return false;
  // The right end of the row's first cell holds no text.
  const QRect cell = view->visualRect(view->model()->index(static_cast<int>(row), 0));
  const QPoint place(cell.right() - 2, cell.center().y());
  const QImage drawn = view->viewport()->grab(QRect(place, QSize(1, 1))).toImage();
  return drawn.pixel(0, 0) != view->palette().color(QPalette::Base).rgb();
}

int QtPlayer::ColumnWidth(ControlId id, std::size_t column) {
  const auto* view = Find<QTreeWidget>(id);
  return view != nullptr ? view->columnWidth(static_cast<int>(column)) : 0;
}

}  // namespace pelora::contract
