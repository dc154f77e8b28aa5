// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/attribute_editing.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/changes/recording_directory.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/modify_rules.h"
#include "hosts/session/field_book.h"
#include "hosts/session/field_rights.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/sheet_commit.h"
#include "hosts/session/text.h"
#include "hosts/session/utf8_check.h"

namespace pelora::session {
namespace {

using ldap::Syntax;

/// Why values of a syntax are no texts; empty for those that are.
std::string_view WhyNoText(Syntax syntax) {
  switch (syntax) {
    case Syntax::kString:
    case Syntax::kBoolean:
    case Syntax::kInteger:
    case Syntax::kLargeInteger:
      return {};
    case Syntax::kDistinguishedName:
    case Syntax::kStructuredName:
      return "Its values name other objects: pages and lists of the object choose those.";
    case Syntax::kTime:
      return "It is a point of time, which the directory sets.";
    case Syntax::kOctets:
    case Syntax::kSecurityDescriptor:
      return "Its values are bytes, not text.";
  }
  return {};
}

constexpr auto kGivenByTheName =
    std::to_array<std::string_view>({"distinguishedName", "name", "objectClass", "objectCategory"});

bool IsGivenByTheName(std::string_view attribute, std::string_view dn) {
  return EqualsWithoutCase(attribute, dn.substr(0, dn.find('='))) ||
         std::ranges::any_of(kGivenByTheName, [attribute](std::string_view name) {
           return EqualsWithoutCase(attribute, name);
         });
}

bool IsText(const std::string& value) {
  return !FirstInvalidByte(value) && value.find('\0') == std::string::npos;
}

bool HasLineBreak(const std::string& value) {
  return value.find_first_of("\r\n") != std::string::npos;
}

ValueForm FormOf(const ldap::AttributeType& type) {
  // Of several Booleans and numbers, each has its line.
  if (!type.is_single_valued) return ValueForm::kLines;
  switch (type.syntax) {
    case Syntax::kBoolean:
      return ValueForm::kBoolean;
    case Syntax::kInteger:
    case Syntax::kLargeInteger:
      return ValueForm::kNumber;
    default:
      return ValueForm::kText;
  }
}

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos;
       at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace

WritableAttributes ReadWritable(ldap::IDirectoryStore& store, const std::string& dn) {
  const std::array<std::string, 1> asked = {FieldRights::kAttribute};
  ldap::Entry entry;
  if (!store.Read(dn, asked, entry).Ok()) return {};
  const auto said = entry.attributes.find(FieldRights::kAttribute);
  if (said == entry.attributes.end()) {
    // A directory that speaks of rights says nothing where there are none.
    WritableAttributes none;
    if (store.schema().Find(FieldRights::kAttribute)) none.allowed.emplace();
    return none;
  }
  return {.allowed = {{said->second.begin(), said->second.end()}}};
}

std::string WhyNotEditable(const ldap::Schema& schema, const WritableAttributes& writable,
                           const ldap::Entry& entry, std::string_view attribute) {
  const std::optional<ldap::AttributeType> type = schema.Find(attribute);
  if (!type) return "The directory's schema does not say what its values are.";
  if (IsGivenByTheName(attribute, entry.dn)) {
    return "It is set when an object is made, renamed or moved.";
  }
  if (const std::string_view why = WhyNoText(type->syntax); !why.empty()) return std::string(why);
  if (writable.allowed && !writable.allowed->contains(std::string(attribute))) {
    return "The directory sets it by itself, or you have no right to change it.";
  }
  const ldap::AttributeValues& values = ldap::ValuesOf(entry, attribute);
  if (!std::ranges::all_of(values, &IsText)) return "Its values are bytes, not text.";
  if (!type->is_single_valued && std::ranges::any_of(values, &HasLineBreak)) {
    return "It may have several values, and one of them has several lines.";
  }
  return {};
}

EditableAttribute Editable(const ldap::Schema& schema, const ldap::Entry& entry,
                           std::string_view attribute) {
  const ldap::AttributeType type = schema.Find(attribute).value_or(ldap::AttributeType());
  return {.attribute = schema.SpellingOf(attribute),
          .form = FormOf(type),
          .is_list = !type.is_single_valued,
          .values = ldap::ValuesOf(entry, attribute)};
}

std::vector<std::string> Settable(const ldap::Schema& schema, const WritableAttributes& writable,
                                  const ldap::Entry& entry) {
  std::vector<std::string> names;
  for (const auto& [name, type] : schema.types()) {
    const bool is_set = entry.attributes.contains(name);
    if (!is_set && WhyNotEditable(schema, writable, entry, name).empty()) names.push_back(name);
  }
  return names;
}

std::string TextOf(const EditableAttribute& edited) {
  std::string text;
  for (const std::string& value : edited.values) text += (text.empty() ? "" : "\n") + value;
  return Replaced(std::move(text), "\r\n", "\n");
}

ldap::AttributeValues ValuesOf(const EditableAttribute& edited, const std::string& typed) {
  // What nobody has touched is as it was, whatever breaks its lines.
  if (typed == TextOf(edited)) return edited.values;
  if (edited.form == ValueForm::kText) {
    return typed.empty() ? ldap::AttributeValues()
                         : ldap::AttributeValues{Replaced(typed, "\n", "\r\n")};
  }
  ldap::AttributeValues values;
  std::size_t begin = 0;
  while (begin <= typed.size()) {
    const std::size_t end = std::min(typed.find('\n', begin), typed.size());
    std::string line = typed.substr(begin, end - begin);
    if (edited.form == ValueForm::kNumber) line = Trimmed(line);
    if (!Trimmed(line).empty()) values.push_back(std::move(line));
    begin = end + 1;
  }
  return values;
}

std::string WhyNotTaken(const ldap::Schema& schema, const std::string& attribute,
                        const ldap::AttributeValues& values) {
  const auto is_name = [](const std::string&) { return true; };
  const ldap::Modification change{.attribute = attribute, .values = values};
  const ldap::StoreStatus status = ldap::ModifyRules(schema, is_name).CheckValues({&change, 1});
  return status.Ok() ? std::string() : status.text + ".";
}

bool WriteAttribute(const AttributeWriting& with, const std::string& dn,
                    const EditableAttribute& seen, ldap::AttributeValues wanted) {
  changes::RecordingDirectory recording(with.store);
  recording.Record({.dn = dn,
                    .attributes = {{.attribute = seen.attribute,
                                    .is_list = seen.is_list,
                                    .seen = seen.values,
                                    .wanted = std::move(wanted),
                                    .is_whole = seen.is_list}}});
  const FieldBook book;
  SheetCommit commit({.store = with.store,
                      .errands = with.errands,
                      .message_box = with.message_box,
                      .desk = with.desk,
                      .history = with.history,
                      .book = book,
                      .name_of = [](const std::string& name) { return OwnNameOf(name); }},
                     {{.recording = &recording, .page = 0, .dialog = nullptr}});
  return !commit.Run().has_value();
}

}  // namespace pelora::session
