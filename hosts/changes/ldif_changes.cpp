// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/ldif_changes.h"

#include <algorithm>
#include <array>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/changes/guarded_request.h"
#include "hosts/changes/seen_mark.h"
#include "hosts/ldap/base64.h"
#include "hosts/ldap/guid_name.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"
#include "hosts/ldap/tree_controls.h"

namespace pelora::changes {
namespace {

using Operation = ldap::Modification::Operation;

constexpr std::size_t kLineLength = 76;
constexpr char kFirstPrintable = ' ';
constexpr char kDelete = 0x7F;

/// Whether a value can stand as it is: printable, and not beginning or ending in a way that a
/// reader takes for something else.
bool IsPlain(std::string_view value) {
  if (value.empty()) return true;
  const bool is_printable = std::ranges::all_of(value, [](char letter) {
    return letter >= kFirstPrintable && letter < kDelete;  // What is beyond ASCII is negative.
  });
  constexpr std::string_view kUnsafeBeginnings = " :<";
  return is_printable && kUnsafeBeginnings.find(value.front()) == std::string_view::npos &&
         value.back() != ' ';
}

void AppendLine(std::string_view line, std::string& text) {
  text += line.substr(0, kLineLength);
  for (std::size_t at = kLineLength; at < line.size(); at += kLineLength - 1) {
    text += "\n ";
    text += line.substr(at, kLineLength - 1);
  }
  text += '\n';
}

void AppendValue(std::string_view name, std::string_view value, std::string& text) {
  std::string line(name);
  line += IsPlain(value) ? ": " + std::string(value) : ":: " + ldap::EncodeBase64(value);
  AppendLine(line, text);
}

void AppendHead(const std::string& dn, std::string_view kind, std::string& text,
                const char* control = nullptr) {
  AppendValue("dn", dn, text);
  if (control != nullptr) AppendValue("control", std::string(control) + " true", text);
  AppendValue("changetype", kind, text);
}

/// Says what lists hold, for our own reader.
void AppendHeld(const Change& change, std::string& text) {
  for (const ValueChange& value : change.attributes) {
    if (!value.is_list || !value.is_whole) continue;
    const std::string begin = std::string(kSeenMark) + value.attribute + ":";
    if (value.seen.empty()) text += begin + '\n';
    for (const std::string& held : value.seen) {
      // Not folded: a reader of comments has the first line of each.
      text += begin + (IsPlain(held) ? " " + held : ": " + ldap::EncodeBase64(held)) + '\n';
    }
  }
}

/// Says which object is meant, for our own reader: tools go by its name.
void AppendSeen(const Change& change, std::string& text) {
  for (const ValueChange& value : change.attributes) {
    for (const std::string& seen : value.seen) {
      text += kSeenMark;
      text += value.attribute + ":: " + ldap::EncodeBase64(seen) + '\n';
    }
  }
}

void AppendModification(const ldap::Modification& modification, std::string& text) {
  AppendValue(modification.operation == Operation::kDelete ? "delete" : "add",
              modification.attribute, text);
  for (const std::string& value : modification.values) {
    AppendValue(modification.attribute, value, text);
  }
  text += "-\n";
}

void AppendModify(const ldap::Schema& schema, const Change& change, Lists lists,
                  std::string& text) {
  const std::vector<ldap::Modification> request = GuardedRequest(schema, change);
  if (request.empty()) return;
  AppendHead(change.dn, "modify", text);
  if (lists == Lists::kUntouched) AppendHeld(change, text);
  for (const ldap::Modification& modification : request) AppendModification(modification, text);
  text += '\n';
}

void AppendAdd(const Change& change, std::string& text) {
  AppendHead(change.dn, "add", text);
  // A reader wants to know the class first.
  for (const bool is_class : {true, false}) {
    for (const ValueChange& value : change.attributes) {
      if (EqualsWithoutCase(value.attribute, "objectClass") != is_class) continue;
      for (const std::string& wanted : value.wanted) AppendValue(value.attribute, wanted, text);
    }
  }
  text += '\n';
}

/// Attributes that a directory does not let go of, not even to take them back at once.
constexpr auto kHeldAttributes =
    std::to_array<std::string_view>({"objectClass", "name", "distinguishedName"});

bool CanGuardDeletion(std::string_view dn, std::string_view attribute) {
  const std::string_view naming = dn.substr(0, dn.find('='));
  return !EqualsWithoutCase(attribute, naming) &&
         std::ranges::none_of(kHeldAttributes, [&](std::string_view held) {
           return EqualsWithoutCase(attribute, held);
         });
}

void AppendDelete(const Change& change, std::string& text) {
  std::string guards;
  for (const ValueChange& value : change.attributes) {
    if (value.seen.empty() || !CanGuardDeletion(change.dn, value.attribute)) continue;
    AppendModification({Operation::kDelete, value.attribute, value.seen}, guards);
    AppendModification({Operation::kAdd, value.attribute, value.seen}, guards);
  }
  if (!guards.empty()) {
    AppendHead(change.dn, "modify", text);
    text += guards + '\n';
  }
  AppendHead(change.dn, "delete", text);
  text += '\n';
}

void AppendRename(const Change& change, std::string& text) {
  AppendHead(change.dn, "modrdn", text);
  AppendSeen(change, text);
  AppendValue("newrdn", ldap::FirstPart(change.new_dn), text);
  AppendValue("deleteoldrdn", "1", text);
  const std::string_view container = ldap::ContainerOf(change.new_dn);
  const bool is_moved = ldap::NameKey(container) != ldap::NameKey(ldap::ContainerOf(change.dn));
  if (is_moved) AppendValue("newsuperior", container, text);
  text += '\n';
}

void AppendRemove(const Change& change, std::string& text) {
  AppendHead(change.dn, "delete", text, change.with_all_below ? ldap::kTreeDeleteControl : nullptr);
  AppendSeen(change, text);
  text += '\n';
}

void AppendRestore(const Change& change, std::string& text) {
  const ValueChange* const guid = change.Find("objectGUID");
  const std::string name =
      guid == nullptr || guid->seen.empty() ? std::string() : guid->seen.front();
  AppendHead(ldap::DeletedName(change.dn, name), "modify", text, ldap::kShowDeletedControl);
  text += "delete: isDeleted\n-\nreplace: distinguishedName\n";
  AppendValue("distinguishedName", change.dn, text);
  text += "-\n\n";
}

}  // namespace

std::string ToLdif(const ldap::Schema& schema, const Change& change, Lists lists) {
  std::string text;
  switch (change.kind) {
    case Change::Kind::kModify:
      AppendModify(schema, change, lists, text);
      break;
    case Change::Kind::kAdd:
      AppendAdd(change, text);
      break;
    case Change::Kind::kDelete:
      AppendDelete(change, text);
      break;
    case Change::Kind::kRename:
      AppendRename(change, text);
      break;
    case Change::Kind::kRemove:
      AppendRemove(change, text);
      break;
    case Change::Kind::kRestore:
      AppendRestore(change, text);
      break;
  }
  return text;
}

}  // namespace pelora::changes
