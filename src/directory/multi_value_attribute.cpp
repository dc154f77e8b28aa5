// SPDX-License-Identifier: Apache-2.0
#include "directory/multi_value_attribute.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "directory/utf.h"

namespace pelora {
namespace {

/// Of an element of a stored list, in characters.
constexpr std::size_t kLongestShown = 1023;

}  // namespace

int MultiValueAttribute::Refresh(IListBox& list) const {
  list.Clear();
  for (const auto& item : items_) {
    if (!item->deleted) Show(list, *item);
  }
  return 0;
}

void MultiValueAttribute::Clear(IListBox& list) {
  // Rows point at their records and go first.
  list.Clear();
  items_.clear();
}

int MultiValueAttribute::Load(IListBox& list, StoredValue value) {
  return Append(list, {.value = std::move(value.text), .is_shown_cut = value.is_shown_cut});
}

int MultiValueAttribute::Add(IListBox& list, std::string value, bool changed, bool is_default) {
  Append(list, {.value = std::move(value), .changed = changed, .is_default = is_default});
  return 0;
}

int MultiValueAttribute::Modify(IListBox& list, std::string value) {
  Item* const item = SelectedItem(list);
  if (item == nullptr) return 1;
  if (item->value == value) return 0;
  item->value = std::move(value);
  item->changed = true;
  item->is_shown_cut = false;
  list.Remove(*list.Selection());
  Show(list, *item);
  return 0;
}

int MultiValueAttribute::SetDefault(IListBox& list) {
  if (!list.Selection()) return 0;
  Item* const item = SelectedItem(list);
  if (item == nullptr) return 1;
  if (item->is_default) return 0;
  // Deleted records count: one that was the default when it was deleted still has the mark.
  const auto marked =
      std::ranges::find_if(items_, [](const auto& record) { return record->is_default; });
  if (marked != items_.end()) {
    (*marked)->is_default = false;
    (*marked)->changed = true;
  }
  item->is_default = true;
  item->changed = true;
  return Refresh(list);
}

void MultiValueAttribute::KeepDefault(IListBox& list, RowIndex row) {
  const auto* const kept = static_cast<const Item*>(list.Data(row));
  if (kept == nullptr || !kept->is_default) return;
  bool is_any_taken = false;
  for (const auto& item : items_) {
    if (item.get() == kept || !item->is_default) continue;
    item->is_default = false;
    item->changed = true;
    is_any_taken = true;
  }
  if (is_any_taken) Refresh(list);
}

int MultiValueAttribute::Delete(IListBox& list) {
  const std::optional<RowIndex> row = list.Selection();
  if (!row) return 0;
  Item* const item = SelectedItem(list);
  if (list.Remove(*row) && item != nullptr) {
    item->changed = true;
    item->deleted = true;
    if (item->is_default) {
      PassDefaultOn();
      Refresh(list);
    }
  }
  const RowIndex left = list.Count();
  if (left > 0) list.Select(std::min(*row, left - 1));
  return 0;
}

const std::string* MultiValueAttribute::SelectedValue(const IListBox& list) {
  const Item* const item = SelectedItem(list);
  return item == nullptr ? nullptr : &item->value;
}

bool MultiValueAttribute::BuildValue(Variant* value, std::string* default_value) const {
  if (std::ranges::none_of(items_, [](const auto& item) { return item->changed; })) return false;
  std::vector<std::string> values;
  for (const auto& item : items_) {
    if (item->deleted) continue;
    if (!item->is_default) values.push_back(item->value);
    if (item->is_default && item->changed && default_value != nullptr) *default_value = item->value;
  }
  if (value != nullptr) *value = Variant::StringArray(values);
  return true;
}

std::function<void(IListBox& list)> MultiValueAttribute::TakeDown() {
  std::vector<Item> records;
  for (const auto& item : items_) records.push_back(*item);
  return [this, records = std::move(records)](IListBox& list) {
    Clear(list);
    for (const Item& record : records) items_.push_back(std::make_unique<Item>(record));
    Refresh(list);
  };
}

MultiValueAttribute::Item* MultiValueAttribute::SelectedItem(const IListBox& list) {
  const std::optional<RowIndex> row = list.Selection();
  return row ? static_cast<Item*>(list.Data(*row)) : nullptr;
}

int MultiValueAttribute::Show(IListBox& list, Item& item) const {
  const std::string text =
      item.is_shown_cut ? FirstCharacters(item.value, kLongestShown) : item.value;
  const std::optional<RowIndex> row =
      list.Add(item.is_default ? text_service_.UpperCase(text) : text);
  if (!row) return 1;
  list.SetData(*row, &item);
  return 0;
}

int MultiValueAttribute::Append(IListBox& list, Item item) {
  items_.push_back(std::make_unique<Item>(std::move(item)));
  return Show(list, *items_.back());
}

void MultiValueAttribute::PassDefaultOn() {
  const auto heir = std::ranges::find_if(items_, [](const auto& item) { return !item->deleted; });
  if (heir == items_.end()) return;
  (*heir)->is_default = true;
  (*heir)->changed = true;
}

}  // namespace pelora
