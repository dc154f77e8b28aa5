// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/check/check_fields.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "directory/ascii_case.h"
#include "server/console_registration.h"

namespace pelora::session {
namespace {

std::vector<std::string> AttributesOf(const CheckFields::RowsByClass& fields,
                                      std::initializer_list<FieldKind> kinds) {
  std::vector<std::string> attributes;
  for (const auto& [class_name, rows] : fields) {
    for (const FieldRow& row : rows) {
      if (row.attributes.empty() || std::ranges::find(kinds, row.kind) == kinds.end()) continue;
      std::string name(row.attributes.front());
      if (std::ranges::find(attributes, name) == attributes.end()) {
        attributes.push_back(std::move(name));
      }
    }
  }
  return attributes;
}

template <class Condition>
const FieldRow* FindIn(const CheckFields::RowsByClass& fields, std::string_view class_name,
                       Condition is_wanted) {
  const auto rows = fields.find(class_name);
  if (rows == fields.end()) return nullptr;
  const auto found = std::ranges::find_if(rows->second, is_wanted);
  return found == rows->second.end() ? nullptr : &*found;
}

}  // namespace

CheckFields::CheckFields(RowsByClass rows)
    : rows_(std::move(rows)),
      name_attributes_(AttributesOf(rows_, {FieldKind::kName, FieldKind::kNameList})),
      server_attributes_(AttributesOf(rows_, {FieldKind::kServer})) {}

std::vector<std::string> CheckFields::Classes() const {
  std::vector<std::string> names;
  for (const auto& [class_name, rows] : rows_) names.push_back(class_name);
  return names;
}

const FieldRow* CheckFields::Find(std::string_view class_name, std::string_view attribute) const {
  return FindIn(rows_, class_name, [attribute](const FieldRow& row) {
    return !row.attributes.empty() && EqualsWithoutCase(row.attributes.front(), attribute);
  });
}

const FieldRow* CheckFields::FindChoice(std::string_view class_name,
                                        std::string_view attribute) const {
  return FindIn(rows_, class_name, [attribute](const FieldRow& row) {
    return row.choice_of && std::ranges::find(row.attributes, attribute) != row.attributes.end();
  });
}

CheckFields CheckFieldsOf(FieldCatalogue& catalogue) {
  CheckFields::RowsByClass rows;
  for (const std::string_view class_name : RegisteredObjectClasses()) {
    const std::vector<Field>& fields = catalogue.FieldsOf(class_name);
    if (fields.empty()) continue;
    std::vector<FieldRow>& of_class = rows[std::string(class_name)];
    for (const Field& field : fields) of_class.push_back(field.row);
  }
  return CheckFields(std::move(rows));
}

}  // namespace pelora::session
