// SPDX-License-Identifier: Apache-2.0
// The names of other objects and of servers that objects hold.
#include <algorithm>
#include <array>
#include <map>
#include <span>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/session/check/check_notes.h"

namespace pelora::session {
namespace {

/// How many names are looked up by one call, their requests under way together.
constexpr std::size_t kNamesAtATime = 500;

bool IsUser(const ldap::Entry& entry) {
  const ldap::AttributeValues& classes = ldap::ValuesOf(entry, "objectClass");
  const auto is_a = [&classes](std::string_view wanted) {
    return std::ranges::any_of(
        classes, [wanted](const std::string& name) { return EqualsWithoutCase(name, wanted); });
  };
  return is_a("user") && !is_a("computer");
}

bool IsDeleted(const ldap::Entry& entry) {
  const ldap::AttributeValues& marks = ldap::ValuesOf(entry, "isDeleted");
  return !marks.empty() && marks.front() == "TRUE";
}

/// Whether the answer to a question for an object means that there is none.
bool MeansNotThere(int code) {
  return code == ldap::kLdapNoSuchObject || code == ldap::kLdapInvalidDnSyntax;
}

/// Whether a name is that of a deleted object: by what the directory puts into the names of those
/// that it keeps for a while, and by where it moves most of them.
bool IsDeletedName(const std::string& dn) {
  const std::string folded = ldap::FoldCase(dn);
  return folded.find("\\0ADEL:") != std::string::npos ||
         folded.find(",CN=DELETED OBJECTS,") != std::string::npos;
}

}  // namespace

void CheckNotes::Names(std::string_view attribute, const std::string& name, Named what,
                       bool can_be_taken_out) {
  if (what == Named::kIsServer && servers_.contains(ldap::FoldCase(name))) return;
  Reference reference = {.rule = rule_,
                         .object = Object(),
                         .attribute = attribute,
                         .name = name,
                         .what = what,
                         .can_be_taken_out = can_be_taken_out};
  if (what == Named::kIsServer) {
    NoteWrongName(reference, "is no computer with a Pelora server");
  } else if (IsDeletedName(name)) {
    NoteWrongName(reference, "was deleted");
  } else {
    references_.push_back(std::move(reference));
  }
}

void CheckNotes::NoteWrongName(const Reference& reference, std::string_view what_is_wrong) {
  std::string message(reference.attribute);
  message += ": " + reference.name + " ";
  message += what_is_wrong;
  Note note = {.rule = reference.rule, .object = reference.object, .message = std::move(message)};
  if (reference.can_be_taken_out) note.mend = TakingOut(reference.attribute, {reference.name});
  notes_.push_back(std::move(note));
}

void CheckNotes::IsThere(const ldap::Entry& entry) {
  targets_[ldap::NameKey(entry.dn)] = IsUser(entry) ? Target::kUser : Target::kOther;
}

CheckNotes::Target CheckNotes::TargetOf(const std::string& name) const {
  const auto known = targets_.find(ldap::NameKey(name));
  return known == targets_.end() ? Target::kUnknown : known->second;
}

std::vector<std::string> CheckNotes::UnknownNames() const {
  std::map<std::string, std::string> unknown;
  for (const Reference& reference : references_) {
    std::string key = ldap::NameKey(reference.name);
    if (!targets_.contains(key)) unknown.emplace(std::move(key), reference.name);
  }
  std::vector<std::string> names;
  names.reserve(unknown.size());
  for (auto& [key, name] : unknown) names.push_back(std::move(name));
  return names;
}

ldap::StoreStatus CheckNotes::LookUpNames(ldap::IDirectoryStore& store) {
  static const std::array<std::string, 2> kAttributes = {"objectClass", "isDeleted"};
  const std::vector<std::string> names = UnknownNames();
  for (std::span<const std::string> left(names); !left.empty();) {
    const auto now = left.first(std::min(kNamesAtATime, left.size()));
    left = left.subspan(now.size());
    std::size_t at = 0;
    const auto take = [&](const ldap::StoreStatus& status, const ldap::Entry& entry) {
      Target& target = targets_[ldap::NameKey(now[at])];
      ++at;
      target = Target::kUnknown;
      if (MeansNotThere(status.code)) {
        target = Target::kNotThere;
      } else if (status.Ok()) {
        target = IsDeleted(entry) ? Target::kNotThere
                 : IsUser(entry)  ? Target::kUser
                                  : Target::kOther;
      }
      return true;
    };
    if (ldap::StoreStatus status = store.ReadMany(now, kAttributes, take); !status.Ok()) {
      return status;
    }
  }
  return {};
}

void CheckNotes::SettleNames() {
  for (const Reference& reference : std::exchange(references_, {})) {
    const Target target = TargetOf(reference.name);
    if (target == Target::kNotThere) {
      NoteWrongName(reference, "is not there");
    } else if (target == Target::kOther && reference.what == Named::kIsUser) {
      NoteWrongName(reference, "is no user");
    }
  }
}

}  // namespace pelora::session
