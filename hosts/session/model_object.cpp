// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/model_object.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/fields/entry_object.h"
#include "hosts/session/fields/field_value.h"

namespace pelora::session {
namespace {

constexpr const char* kGroupType = "groupType";

/// What the directory itself says of where a person works.
struct Workplace {
  std::string_view attribute;
  std::string_view label;
};
constexpr std::array kWorkplace = {Workplace{"company", "Company"},
                                   Workplace{"department", "Department"},
                                   Workplace{"physicalDeliveryOfficeName", "Office"}};

/// Whether several objects may share a value: one that a tab writes to all that are selected.
bool IsShared(std::string_view attribute) {
  using enum MultiSelectionRule;
  const auto* const found = std::ranges::find(kAttributeCatalogue, attribute, &Attribute::name);
  if (found == kAttributeCatalogue.end()) return false;
  return found->multi_selection != kNo && found->multi_selection != kNeverWritten;
}

bool IsShared(const FieldRow& row) {
  return std::ranges::all_of(row.attributes, [](auto attribute) { return IsShared(attribute); });
}

bool IsAmong(std::string_view attribute, std::span<const std::string_view> attributes) {
  return std::ranges::find(attributes, attribute) != attributes.end();
}

void FillFlag(const FieldRow& row, IDialog& dialog, IDialogController& page) {
  if (dialog.Check(row.control) == CheckState::kChecked) return;
  dialog.SetCheck(row.control, CheckState::kChecked);
  (void)page.OnCommand(row.control, ControlNotification::kClicked);
}

void FillChoice(const FieldRow& row, std::size_t choice, IDialog& dialog, IDialogController& page) {
  dialog.ComboBox(row.control).Select(choice);
  (void)page.OnCommand(row.control, ControlNotification::kSelectionChange);
}

/// What is known by one name only says which it is by the box around it.
void TellApart(std::vector<std::string>& labels, const std::vector<std::string>& groups) {
  std::map<std::string, int> counts;
  for (const std::string& label : labels) ++counts[label];
  for (std::size_t at = 0; at < labels.size(); ++at) {
    if (counts[labels[at]] > 1 && !groups[at].empty()) labels[at] += " (" + groups[at] + ")";
  }
}

}  // namespace

std::vector<std::string> ModelObject::Attributes(std::span<const Field> fields) {
  std::vector<std::string> attributes = {"objectClass", kGroupType};
  const auto add = [&attributes](std::string_view attribute) {
    if (std::ranges::find(attributes, attribute) == attributes.end()) {
      attributes.emplace_back(attribute);
    }
  };
  for (const Field& field : fields) {
    for (const std::string_view attribute : field.row.attributes) add(attribute);
  }
  for (const Workplace& place : kWorkplace) add(place.attribute);
  return attributes;
}

void ModelObject::TakeOver(OwnValues& values) const {
  const std::optional<std::int32_t> type = ldap::ParseInteger(ldap::FirstValue(entry_, kGroupType));
  if (type) ReadGroupType(*type, values);
}

void ModelObject::FillIn(const std::vector<FieldRow>& rows, IDialog& dialog,
                         IDialogController& page) const {
  EntryObject object(entry_, schema_);
  for (const FieldRow& row : rows) {
    if (!IsShared(row)) continue;
    const ldap::AttributeValues values = ValuesToTake(row, row.attributes.front());
    switch (row.kind) {
      case FieldKind::kFlag:
        if (!values.empty() && values.front() != "0") FillFlag(row, dialog, page);
        break;
      case FieldKind::kChoice:
        if (const auto choice = row.choice_of(object)) FillChoice(row, *choice, dialog, page);
        break;
      case FieldKind::kNumber:
      case FieldKind::kText:
      case FieldKind::kName:
      case FieldKind::kServer:
        // An edit control reports what is put into it by itself.
        if (!values.empty()) dialog.SetText(row.control, values.front());
        break;
      case FieldKind::kDefaultEntry:
      case FieldKind::kList:
      case FieldKind::kNameList:
        break;
    }
  }
}

ldap::AttributeValues ModelObject::ValuesToTake(const FieldRow& row,
                                                std::string_view attribute) const {
  ldap::AttributeValues values = ldap::ValuesOf(entry_, attribute);
  std::erase_if(values, &IsHiddenName);
  // A list in which each row of a list view has a value of its own: what has no row would go
  // unseen.
  if (row.kind == FieldKind::kChoice && !row.entry.empty()) {
    std::erase_if(values, [&row](const std::string& value) { return value != row.entry; });
  }
  return values;
}

bool ModelObject::AddValues(const FieldRow& row, Rest& rest) const {
  bool is_any = false;
  for (const std::string_view attribute : row.attributes) {
    for (std::string& value : ValuesToTake(row, attribute)) {
      is_any = true;
      auto known = std::ranges::find(rest.values, attribute, &ldap::Modification::attribute);
      if (known == rest.values.end()) {
        rest.values.push_back({.attribute = std::string(attribute), .values = {}});
        known = rest.values.end() - 1;
      }
      const bool is_new = std::ranges::find(known->values, value) == known->values.end();
      if (is_new) known->values.push_back(std::move(value));
    }
  }
  return is_any;
}

void ModelObject::AddSettings(std::span<const std::string_view> shown, Rest& rest) const {
  EntryObject object(entry_, schema_);
  std::vector<std::string> labels;
  std::vector<std::string> groups;
  std::vector<std::string> texts;
  for (const Field& field : fields_) {
    const bool is_shown = std::ranges::any_of(
        field.row.attributes, [shown](auto attribute) { return IsAmong(attribute, shown); });
    if (is_shown || field.row.is_read_only || !IsShared(field.row)) continue;
    const FieldValue value = ReadField(field, entry_, object);
    // A box that is not checked is as one of which nothing is said.
    const auto* const flag = std::get_if<bool>(&value);
    if ((flag != nullptr && !*flag) || !AddValues(field.row, rest)) continue;
    labels.push_back(field.place.label);
    groups.push_back(field.place.group);
    texts.push_back(PrintedText(value));
  }
  TellApart(labels, groups);
  for (std::size_t at = 0; at < labels.size(); ++at) {
    rest.lines.push_back(labels[at] + ": " + texts[at]);
  }
}

ModelObject::Rest ModelObject::RestBeside(std::span<const std::string_view> shown,
                                          bool with_settings) const {
  Rest rest;
  if (with_settings) AddSettings(shown, rest);
  for (const Workplace& place : kWorkplace) {
    const ldap::AttributeValues& values = ldap::ValuesOf(entry_, place.attribute);
    if (values.empty()) continue;
    rest.values.push_back({.attribute = std::string(place.attribute), .values = values});
    rest.lines.push_back(std::string(place.label) + ": " + values.front());
  }
  return rest;
}

HRESULT ModelObject::Stage(const Rest& rest, IADs& object) const {
  for (const ldap::Modification& one : rest.values) {
    const std::optional<ldap::AttributeType> type = schema_.Find(one.attribute);
    Variant value;
    HRESULT status =
        type ? ldap::DecodeValues(type->syntax, one.values, value) : E_ADS_CANT_CONVERT_DATATYPE;
    if (SUCCEEDED(status)) status = object.Put(one.attribute, value);
    if (FAILED(status)) return status;
  }
  return S_OK;
}

}  // namespace pelora::session
