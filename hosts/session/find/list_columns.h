// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/fields/field_catalogue.h"

namespace pelora::session {

/// What a list of objects can show of each of them.
struct ListColumn {
  enum class Order : std::uint8_t { kText, kNumber };

  /// As files and scripts call it: a word of its own, or the field's name.
  std::string name;
  std::string title;
  /// Where a field is found: the titles of its tab and of the box around it; empty for what every
  /// object has.
  std::string place{};
  /// Numbers are ordered as such.
  Order order = Order::kText;
  /// Folders, names of objects in the directory and addresses: what differs of them may be at their
  /// end.
  bool tells_at_end = false;
};

/// The words of the columns that every object has: name, type, folder and their like. `peloractl`
/// passes over them in a table that it applies.
[[nodiscard]] std::span<const std::string_view> OwnColumnWords();

/// Every column there is: those of every object, then the fields of all classes, in the order of
/// their tabs.
[[nodiscard]] std::vector<ListColumn> AllColumns(FieldCatalogue& fields);

/// One object in a list, with the texts of its columns.
struct ListedObject {
  DirectoryObject object;
  /// One for each column; empty for a field that objects of the class do not have.
  std::vector<std::string> cells{};
  /// Of what a rule finds: the attribute that it is about; empty elsewhere.
  std::string attribute{};
};

/// The columns of a list: what is read for them, and what stands in them. May be used on any
/// thread, by one at a time.
class ListColumns {
 public:
  /// Names that are no column's are left out, as is a name that comes twice. The catalogue outlives
  /// the columns.
  ListColumns(std::span<const std::string> names, FieldCatalogue& fields)
      : ListColumns(names, &fields) {}
  /// Null: there are no fields.
  ListColumns(std::span<const std::string> names, FieldCatalogue* fields);

  [[nodiscard]] const std::vector<ListColumn>& columns() const { return columns_; }
  /// What is to be read of an object, its classes included.
  [[nodiscard]] std::vector<std::string> Attributes() const;
  [[nodiscard]] ListedObject ObjectOf(const ldap::Entry& entry, const ldap::Schema& schema) const;
  /// What the tabs call the field that edits an attribute; the attribute itself where none does.
  [[nodiscard]] std::string TitleOf(const std::string& attribute) const;
  /// Puts a text into a column of an object; nothing when there is no such column.
  void SetCell(ListedObject& listed, std::string_view column, std::string text) const;

 private:
  [[nodiscard]] std::string FieldText(std::size_t column, const ldap::Entry& entry,
                                      const DirectoryObject& object,
                                      const ldap::Schema& schema) const;

  std::vector<ListColumn> columns_;
  /// The fields of the columns by class; null where a class has none of a column.
  std::map<std::string, std::vector<const Field*>, std::less<>> fields_;
  std::map<std::string, std::string, std::less<>> titles_;
};

/// A time of the directory ("20261122004801.0Z") as year, month, day, hour and minute of the user's
/// time zone ("2026-11-22 01:48"); a text that is none stays.
[[nodiscard]] std::string TimeText(const std::string& value);

}  // namespace pelora::session
