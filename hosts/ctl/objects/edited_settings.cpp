// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/objects/edited_settings.h"

#include <algorithm>
#include <set>

#include "directory/ascii_case.h"
#include "hosts/ctl/fields/fields.h"
#include "hosts/ldap/name_key.h"

namespace pelora::ctl {
namespace {

/// The values of a field as lines of the text: none for what is empty.
std::vector<std::string> LinesOf(const FieldValue& value) {
  std::vector<std::string> lines = PrintedLines(value);
  std::erase(lines, std::string());
  return lines;
}

/// What a change of a field's lines asks for.
Assignment AssignmentOf(const Field& field, const std::vector<std::string>& lines) {
  Assignment assignment{.field = field.row.name};
  if (field.IsList()) {
    assignment.value = JoinList(lines);
  } else if (!lines.empty()) {
    assignment.value = lines.front();
  }
  return assignment;
}

std::size_t LineOfField(const EditObject& object, const std::string& message) {
  for (const EditField& field : object.fields) {
    const std::string prefix = field.name + ":";
    if (EqualsWithoutCase(message.substr(0, prefix.size()), prefix)) return field.line;
  }
  return object.line;
}

}  // namespace

EditedSettings::EditedSettings(Workplace& workplace, std::span<const Target> targets)
    : workplace_(workplace), objects_(targets.size()) {
  const auto take = [&](const Target& target, const ldap::Entry& entry) {
    Object& object = objects_[static_cast<std::size_t>(&target - targets.data())];
    object.entry = entry;
    object.shown = SettingsOf(entry, workplace_);
  };
  // Those that cannot be shown are told of with the results.
  ReadEntries(workplace_, targets, take, [&](const Target& target, const std::string& problem) {
    Object& object = objects_[static_cast<std::size_t>(&target - targets.data())];
    object.problem = problem;
  });
}

bool EditedSettings::IsEmpty() const {
  return std::ranges::all_of(objects_,
                             [](const Object& object) { return object.entry.dn.empty(); });
}

std::string EditedSettings::Text() const {
  std::vector<EditObject> shown;
  for (const Object& object : objects_) {
    if (object.entry.dn.empty()) continue;
    EditObject& edited = shown.emplace_back(EditObject{.dn = object.entry.dn});
    for (const ShownField& field : object.shown.fields) {
      edited.fields.push_back({.name = field.field->row.name,
                               .label = field.field->place.label,
                               .values = LinesOf(field.value)});
    }
  }
  return WriteEditText(shown);
}

std::vector<EditFault> EditedSettings::Take(const std::string& text, SettingsChanger& changer) {
  for (Object& object : objects_) object.assignments.clear();
  std::vector<EditObject> edited;
  if (auto fault = ReadEditText(text, edited); fault) return {*fault};
  std::vector<EditFault> faults;
  std::set<std::string> seen;
  for (const EditObject& object : edited) {
    if (!seen.insert(ldap::NameKey(object.dn)).second) {
      faults.push_back({object.line, "this object stands above already"});
      continue;
    }
    const std::vector<EditFault> found = Compare(object, changer);
    faults.insert(faults.end(), found.begin(), found.end());
  }
  if (!faults.empty()) {
    for (Object& object : objects_) object.assignments.clear();
  }
  return faults;
}

std::vector<EditFault> EditedSettings::Compare(const EditObject& edited, SettingsChanger& changer) {
  const auto object =
      std::ranges::find_if(objects_, [key = ldap::NameKey(edited.dn)](const Object& known) {
        return !known.entry.dn.empty() && ldap::NameKey(known.entry.dn) == key;
      });
  if (object == objects_.end()) return {{edited.line, "this object was not opened"}};
  std::vector<EditFault> faults;
  for (const EditField& field : edited.fields) {
    const auto shown = std::ranges::find_if(object->shown.fields, [&](const ShownField& known) {
      return EqualsWithoutCase(known.field->row.name, field.name);
    });
    if (shown == object->shown.fields.end()) {
      faults.push_back({field.line, "this object has no field \"" + field.name + "\""});
    } else if (!shown->field->IsList() && field.values.size() > 1) {
      faults.push_back({field.line, field.name + " has one value"});
    } else if (field.values != LinesOf(shown->value)) {
      object->assignments.push_back(AssignmentOf(*shown->field, field.values));
    }
  }
  for (const ShownField& shown : object->shown.fields) {
    const auto is_same = [&shown](const EditField& field) {
      return EqualsWithoutCase(shown.field->row.name, field.name);
    };
    const bool is_emptied = shown.field->IsList() && !LinesOf(shown.value).empty() &&
                            !edited.fields.empty() && std::ranges::none_of(edited.fields, is_same);
    if (is_emptied) object->assignments.push_back(AssignmentOf(*shown.field, {}));
  }
  if (!faults.empty() || object->assignments.empty()) return faults;
  // Nothing is sent here: the tabs are only asked whether they would take it.
  const changes::Prepared prepared =
      changer.Prepare({.at = 0, .status = {}, .entry = object->entry}, object->assignments);
  if (prepared.instead) {
    faults.push_back({LineOfField(edited, prepared.instead->message), prepared.instead->message});
  }
  return faults;
}

changes::Result EditedSettings::GivenUp(std::size_t at, const Target& target,
                                        const std::string& reason) const {
  const Object& object = objects_[at];
  return {.dn = object.entry.dn.empty() ? target.given : object.entry.dn,
          .outcome = changes::Outcome::kRefused,
          .message = object.problem.empty() ? reason : object.problem};
}

std::string EditedSettings::WhatElseChanged(std::size_t at, const ldap::Entry& entry) const {
  const Object& object = objects_[at];
  EntryObject bound(entry, workplace_.store().schema());
  for (const Assignment& assignment : object.assignments) {
    const auto shown = std::ranges::find_if(object.shown.fields, [&](const ShownField& known) {
      return known.field->row.name == assignment.field;
    });
    const std::string was = PrintedText(shown->value);
    const std::string is = PrintedText(ReadField(*shown->field, entry, bound));
    if (is == was || is == assignment.value) continue;
    const auto told = [](const std::string& text) { return text.empty() ? "empty" : text; };
    return assignment.field + " was " + told(was) + " when it was read, is " + told(is) +
           " now, and was to become " + told(assignment.value);
  }
  return {};
}

}  // namespace pelora::ctl
