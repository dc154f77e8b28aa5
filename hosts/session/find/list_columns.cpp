// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/find/list_columns.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/directory_time.h"
#include "hosts/session/fields/entry_object.h"
#include "hosts/session/fields/field_value.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/new_object_kind.h"

namespace pelora::session {
namespace {

std::string NameCell(const ldap::Entry& /*entry*/, const DirectoryObject& object) {
  return object.name;
}
std::string TypeCell(const ldap::Entry& /*entry*/, const DirectoryObject& object) {
  return object.kind.type_text;
}
std::string FolderCell(const ldap::Entry& entry, const DirectoryObject& object) {
  return object.kind.icon == ObjectIcon::kDomain ? std::string() : FolderOf(entry.dn);
}
std::string LogonCell(const ldap::Entry& entry, const DirectoryObject& /*object*/) {
  return ldap::FirstValue(entry, "sAMAccountName");
}
std::string DescriptionCell(const ldap::Entry& /*entry*/, const DirectoryObject& object) {
  return object.description;
}
std::string CreatedCell(const ldap::Entry& entry, const DirectoryObject& /*object*/) {
  return TimeText(ldap::FirstValue(entry, "whenCreated"));
}
std::string ChangedCell(const ldap::Entry& entry, const DirectoryObject& /*object*/) {
  return TimeText(ldap::FirstValue(entry, "whenChanged"));
}
std::string NoCell(const ldap::Entry& /*entry*/, const DirectoryObject& /*object*/) { return {}; }

/// A column that every object has.
struct OwnColumn {
  std::string_view name;
  std::string_view title;
  /// Empty: nothing besides what is read of every object.
  std::string_view attribute;
  std::string (*cell)(const ldap::Entry& entry, const DirectoryObject& object);
  bool tells_at_end = false;
};

constexpr std::array<OwnColumn, 9> kOwnColumns = {{
    {"name", "Name", "", &NameCell},
    {"type", "Type", "", &TypeCell},
    {"folder", "Folder", "", &FolderCell, true},
    {"logon", "Logon Name", "sAMAccountName", &LogonCell},
    {"remark", "Description", "", &DescriptionCell},
    {"created", "Created", "whenCreated", &CreatedCell},
    {"changed", "Changed", "whenChanged", &ChangedCell},
    // What a rule of the check finds; empty elsewhere.
    {"problem", "What Is Wrong", "", &NoCell},
    {"field", "Field", "", &NoCell},
}};

const OwnColumn* FindOwn(std::string_view name) {
  const auto found = std::ranges::find_if(
      kOwnColumns, [name](const OwnColumn& own) { return EqualsWithoutCase(own.name, name); });
  return found == kOwnColumns.end() ? nullptr : &*found;
}

/// A list stands under the same label as its default entry, whose attribute is its second.
std::string TitleOfField(const Field& field) {
  const bool has_default = field.row.kind == FieldKind::kList && field.row.attributes.size() > 1;
  return field.place.label + (has_default ? ": others" : "");
}

bool TellsAtEnd(FieldKind kind) {
  return kind == FieldKind::kName || kind == FieldKind::kNameList ||
         kind == FieldKind::kDefaultEntry || kind == FieldKind::kList;
}

ListColumn ColumnOf(const Field& field) {
  const std::string& group = field.place.group;
  return {.name = field.row.name,
          .title = TitleOfField(field),
          .place = field.tab + (group.empty() ? "" : ": " + group),
          .order = field.row.kind == FieldKind::kNumber ? ListColumn::Order::kNumber
                                                        : ListColumn::Order::kText,
          .tells_at_end = TellsAtEnd(field.row.kind)};
}

ListColumn ColumnOf(const OwnColumn& own) {
  return {.name = std::string(own.name),
          .title = std::string(own.title),
          .tells_at_end = own.tells_at_end};
}

}  // namespace

std::span<const std::string_view> OwnColumnWords() {
  static constexpr auto kWords = [] {
    std::array<std::string_view, kOwnColumns.size()> words;
    for (std::size_t at = 0; at < words.size(); ++at) words[at] = kOwnColumns[at].name;
    return words;
  }();
  return kWords;
}

std::vector<ListColumn> AllColumns(FieldCatalogue& fields) {
  std::vector<ListColumn> all;
  for (const OwnColumn& own : kOwnColumns) all.push_back(ColumnOf(own));
  std::vector<std::string> classes;
  for (const NewObjectKind& kind : NewObjectKinds()) classes.emplace_back(kind.class_name);
  for (const Field* field : fields.FieldsOfAll(classes)) all.push_back(ColumnOf(*field));
  return all;
}

ListColumns::ListColumns(std::span<const std::string> names, FieldCatalogue* fields) {
  for (const std::string& name : names) {
    const auto is_same = [&name](const ListColumn& column) {
      return EqualsWithoutCase(column.name, name);
    };
    if (std::ranges::any_of(columns_, is_same)) continue;
    if (const OwnColumn* own = FindOwn(name); own != nullptr) {
      columns_.push_back(ColumnOf(*own));
      continue;
    }
    const Field* field = fields == nullptr ? nullptr : fields->FindAnywhere(name);
    if (field != nullptr) columns_.push_back(ColumnOf(*field));
  }
  if (fields == nullptr) return;
  for (const NewObjectKind& kind : NewObjectKinds()) {
    std::vector<const Field*>& of_class = fields_[std::string(kind.class_name)];
    for (const ListColumn& column : columns_) {
      const bool is_own = FindOwn(column.name) != nullptr;
      of_class.push_back(is_own ? nullptr : fields->Find(kind.class_name, column.name));
    }
    for (const Field& field : fields->FieldsOf(kind.class_name)) {
      for (const std::string_view attribute : field.row.attributes) {
        titles_.emplace(attribute, field.place.label);
      }
    }
  }
}

std::vector<std::string> ListColumns::Attributes() const {
  const std::vector<std::string>& always = ObjectAttributes();
  std::set<std::string> attributes(always.begin(), always.end());
  for (const ListColumn& column : columns_) {
    const OwnColumn* own = FindOwn(column.name);
    if (own != nullptr && !own->attribute.empty()) attributes.emplace(own->attribute);
  }
  for (const auto& [class_name, fields] : fields_) {
    for (const Field* field : fields) {
      if (field == nullptr) continue;
      const auto& of_field = field->row.attributes;
      const bool needs_all = field->row.kind == FieldKind::kChoice;
      attributes.insert(of_field.begin(), needs_all ? of_field.end() : of_field.begin() + 1);
    }
  }
  return {attributes.begin(), attributes.end()};
}

std::string ListColumns::FieldText(std::size_t column, const ldap::Entry& entry,
                                   const DirectoryObject& object,
                                   const ldap::Schema& schema) const {
  const auto fields = fields_.find(object.kind.class_name);
  if (fields == fields_.end() || fields->second[column] == nullptr) return {};
  EntryObject bound(entry, schema);
  return PrintedText(ReadField(*fields->second[column], entry, bound));
}

ListedObject ListColumns::ObjectOf(const ldap::Entry& entry, const ldap::Schema& schema) const {
  ListedObject listed{.object = session::ObjectOf(entry)};
  listed.cells.reserve(columns_.size());
  for (std::size_t column = 0; column < columns_.size(); ++column) {
    const OwnColumn* own = FindOwn(columns_[column].name);
    listed.cells.push_back(own != nullptr ? own->cell(entry, listed.object)
                                          : FieldText(column, entry, listed.object, schema));
  }
  return listed;
}

std::string ListColumns::TitleOf(const std::string& attribute) const {
  const auto title = titles_.find(attribute);
  return title == titles_.end() ? attribute : title->second;
}

void ListColumns::SetCell(ListedObject& listed, std::string_view column, std::string text) const {
  const auto found = std::ranges::find(columns_, column, &ListColumn::name);
  if (found == columns_.end()) return;
  listed.cells[static_cast<std::size_t>(found - columns_.begin())] = std::move(text);
}

std::string TimeText(const std::string& value) {
  const auto time = ReadDirectoryTime(value);
  const std::string text = time ? WallTimeText(*time) : std::string();
  return text.empty() ? value : text;
}

}  // namespace pelora::session
