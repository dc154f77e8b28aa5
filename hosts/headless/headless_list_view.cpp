// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_list_view.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace pelora {

void HeadlessListView::InsertColumn(std::size_t column, std::string_view title, int width) {
  const auto place = static_cast<std::ptrdiff_t>(std::min(column, columns_.size()));
  columns_.insert(columns_.begin() + place, Column{std::string(title), width});
  for (Row& row : rows_) {
    if (std::cmp_less(place, row.texts.size())) row.texts.insert(row.texts.begin() + place, "");
  }
}

void HeadlessListView::InsertRow(RowIndex row, std::string_view text) {
  const auto place = static_cast<std::ptrdiff_t>(std::min(row, rows_.size()));
  rows_.insert(rows_.begin() + place, Row{{std::string(text)}, false});
}

std::string HeadlessListView::Text(RowIndex row, std::size_t column) const {
  if (row >= rows_.size() || column >= rows_[row].texts.size()) return {};
  return rows_[row].texts[column];
}

void HeadlessListView::SetText(RowIndex row, std::size_t column, std::string_view text) {
  if (row >= rows_.size() || column >= columns_.size()) return;
  std::vector<std::string>& texts = rows_[row].texts;
  if (texts.size() <= column) texts.resize(column + 1);
  texts[column] = text;
  const bool selected = rows_[row].selected;
  listener_({row, false, selected, selected});
}

bool HeadlessListView::IsSelected(RowIndex row) const {
  return row < rows_.size() && rows_[row].selected;
}

void HeadlessListView::SetSelected(RowIndex row, bool selected) {
  if (row >= rows_.size() || rows_[row].selected == selected) return;
  rows_[row].selected = selected;
  listener_({row, true, !selected, selected});
}

}  // namespace pelora
