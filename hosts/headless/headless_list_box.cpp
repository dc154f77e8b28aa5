// SPDX-License-Identifier: Apache-2.0
#include "hosts/headless/headless_list_box.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "hosts/headless/list_order.h"

namespace pelora {

std::optional<RowIndex> HeadlessListBox::Add(std::string_view text) {
  Row added{std::string(text), sorted_ ? ListOrderKey(text, text_service_) : std::string()};
  // Without keys every row is the equal of every other, and the end is behind them all.
  const auto place = std::ranges::upper_bound(rows_, added.order_key, {}, &Row::order_key);
  const auto row = static_cast<RowIndex>(std::distance(rows_.begin(), place));
  rows_.insert(place, std::move(added));
  if (selection_ && *selection_ >= row) ++*selection_;
  return row;
}

bool HeadlessListBox::Remove(RowIndex row) {
  if (row >= rows_.size()) return false;
  rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(row));
  if (selection_ == row) {
    selection_.reset();
  } else if (selection_ && *selection_ > row) {
    --*selection_;
  }
  return true;
}

void HeadlessListBox::Clear() {
  rows_.clear();
  selection_.reset();
}

std::string HeadlessListBox::Text(RowIndex row) const {
  return row < rows_.size() ? rows_[row].text : std::string();
}

void* HeadlessListBox::Data(RowIndex row) const {
  return row < rows_.size() ? rows_[row].data : nullptr;
}

void HeadlessListBox::SetData(RowIndex row, void* data) {
  if (row < rows_.size()) rows_[row].data = data;
}

void HeadlessListBox::Select(std::optional<RowIndex> row) {
  selection_ = row && *row < rows_.size() ? row : std::nullopt;
}

}  // namespace pelora
