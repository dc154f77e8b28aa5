// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/dialog.h"
#include "platform/text_service.h"
#include "platform/variant.h"

namespace pelora {

/// A value of an attribute as it is stored.
struct StoredValue {
  std::string text;
  /// The list box shows the beginning of a very long text. The record keeps all of it: no value is
  /// ever written back shorter than it was read.
  bool is_shown_cut = false;
};

/// One list box bound to one multi-valued attribute.
///
/// Keeps a record of every value that was ever shown beside the list box, so that what is added,
/// modified, deleted or made the default is remembered until it is collected, and turns the records
/// into the attribute's new value. A row carries the address of its record as its data: rows are
/// sorted, so a position says nothing.
///
/// One value at most is meant to be the default: it is shown in capitals, its stored value keeps
/// its case, and it is kept out of the attribute, for the owner to write it elsewhere. Deleting the
/// default passes the mark on, and the deleted record keeps its own; a later `SetDefault` may
/// therefore take the mark off a deleted record and leave two live ones with it.
///
/// The operations take the list box of the moment and report only through their results, 0 for
/// done.
class MultiValueAttribute {
 public:
  /// `text_service` outlives the list.
  explicit MultiValueAttribute(const ITextService& text_service) : text_service_(text_service) {}
  virtual ~MultiValueAttribute() = default;
  MultiValueAttribute(const MultiValueAttribute&) = delete;
  MultiValueAttribute& operator=(const MultiValueAttribute&) = delete;

  /// Shows every value that is not deleted in the emptied list box. Always 0.
  int Refresh(IListBox& list) const;

  /// Forgets every record and empties the list box: what comes next is loaded.
  void Clear(IListBox& list);
  /// Takes a value as stored, neither changed nor default. 1 when the list box refuses the row; the
  /// record is kept all the same.
  int Load(IListBox& list, StoredValue value);
  /// Appends a value; equal ones may stand side by side. Always 0, even without a row.
  int Add(IListBox& list, std::string value, bool changed, bool is_default);
  /// Replaces the selected value; the same text, case included, is no change. 1 when no record is
  /// selected.
  int Modify(IListBox& list, std::string value);
  /// Makes the selected value the default. 1 when the selected row has no record.
  int SetDefault(IListBox& list);
  /// Takes the mark of the default one off every value but that of a row that has it, deleted ones
  /// too; nothing when the row has none. For hosts of which what is shown is to be stored.
  void KeepDefault(IListBox& list, RowIndex row);
  /// Deletes the selected value and selects the row that takes its place, or the last. Always 0.
  int Delete(IListBox& list);

  /// The selected row's value; null when no record is selected. It stands until the next change.
  [[nodiscard]] static const std::string* SelectedValue(const IListBox& list);

  /// Whether anything changed since loading. Only then `*value` becomes the array of all values
  /// that are neither deleted nor default, in the order in which they were added, and
  /// `*default_value` the default's, if the default itself changed. Either may be null.
  bool BuildValue(Variant* value, std::string* default_value) const;

  /// Takes down every record as it is, deleted ones too. What it gives puts them back and shows
  /// them in the list box; the list outlives it.
  [[nodiscard]] std::function<void(IListBox& list)> TakeDown();

 private:
  struct Item {
    std::string value;
    bool changed = false;
    bool deleted = false;
    bool is_default = false;
    bool is_shown_cut = false;
  };

  [[nodiscard]] static Item* SelectedItem(const IListBox& list);
  int Show(IListBox& list, Item& item) const;
  int Append(IListBox& list, Item item);
  void PassDefaultOn();

  const ITextService& text_service_;
  /// In the order in which they were added. Rows point at them, so none moves or goes before the
  /// end.
  std::vector<std::unique_ptr<Item>> items_;
};

}  // namespace pelora
