// SPDX-License-Identifier: Apache-2.0
#include "hosts/changes/change.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/value_equality.h"

namespace pelora::changes {
namespace {

/// Taken by a directory and never given back.
constexpr auto kSecretAttributes = std::to_array<std::string_view>({
    "unicodePwd",
    "userPassword",
    "clearTextPassword",
    "dBCSPwd",
    "supplementalCredentials",
});

bool IsSecret(std::string_view attribute) {
  return std::ranges::any_of(kSecretAttributes, [&](std::string_view secret) {
    return EqualsWithoutCase(secret, attribute);
  });
}

constexpr std::string_view kLockedSince = "lockoutTime";
constexpr std::string_view kPasswordSet = "pwdLastSet";
/// Written so, the directory puts the time in its place.
constexpr const char* kNow = "-1";

/// What an attribute goes back to: a time that was set for a password cannot be set again, but that
/// the password is good.
AttributeValues FormerValues(const ValueChange& value) {
  const bool is_password = EqualsWithoutCase(value.attribute, kPasswordSet);
  return is_password && !value.seen.empty() ? AttributeValues{kNow} : value.seen;
}

constexpr std::string_view kClasses = "objectClass";

Change::Kind UndoOf(Change::Kind kind) {
  if (kind == Change::Kind::kAdd) return Change::Kind::kDelete;
  return kind == Change::Kind::kDelete ? Change::Kind::kAdd : Change::Kind::kModify;
}

/// Takes back another name, a deletion of what is kept, and the taking back of one.
Change UndoOfPlace(const Change& change) {
  Change undo = change;
  switch (change.kind) {
    case Change::Kind::kRename:
      std::swap(undo.dn, undo.new_dn);
      break;
    case Change::Kind::kRemove:
      undo = {.kind = Change::Kind::kRestore, .dn = change.dn, .attributes = change.attributes};
      break;
    default:
      undo.kind = Change::Kind::kRemove;
      undo.is_kept = true;
  }
  return undo;
}

bool IsOfPlace(Change::Kind kind) {
  return kind == Change::Kind::kRename || kind == Change::Kind::kRemove ||
         kind == Change::Kind::kRestore;
}

}  // namespace

// Nobody but the directory locks an account, and what it has made of `kNow` is not known.
bool IsForGood(const ValueChange& value) {
  if (IsSecret(value.attribute) || EqualsWithoutCase(value.attribute, kLockedSince)) return true;
  return EqualsWithoutCase(value.attribute, kPasswordSet) && value.wanted == AttributeValues{kNow};
}

const ValueChange* Change::Find(std::string_view attribute) const {
  const auto found = std::ranges::find_if(attributes, [&](const ValueChange& change) {
    return EqualsWithoutCase(change.attribute, attribute);
  });
  return found == attributes.end() ? nullptr : &*found;
}

ValueChange* Change::Find(std::string_view attribute) {
  return const_cast<ValueChange*>(std::as_const(*this).Find(attribute));
}

AttributeValues Without(ldap::Syntax syntax, const AttributeValues& values,
                        const AttributeValues& others) {
  if (values.empty() || others.empty()) return values;
  std::set<std::string> keys;
  for (const std::string& other : others) keys.insert(ldap::EditingKey(syntax, other));
  AttributeValues left;
  std::ranges::copy_if(values, std::back_inserter(left), [&](const std::string& value) {
    return !keys.contains(ldap::EditingKey(syntax, value));
  });
  return left;
}

bool AreSameValues(ldap::Syntax syntax, const AttributeValues& left, const AttributeValues& right) {
  if (left.size() != right.size()) return false;
  return left == right ||
         (Without(syntax, left, right).empty() && Without(syntax, right, left).empty());
}

ldap::Syntax SyntaxOf(const ldap::Schema& schema, std::string_view attribute) {
  const std::optional<ldap::AttributeType> type = schema.Find(attribute);
  return type ? type->syntax : ldap::Syntax::kString;
}

void DropWhatChangesNothing(const ldap::Schema& schema, Change& change) {
  if (change.kind != Change::Kind::kModify) return;
  std::erase_if(change.attributes, [&](const ValueChange& value) {
    return AreSameValues(SyntaxOf(schema, value.attribute), value.seen, value.wanted);
  });
}

Change AdditionOf(const ldap::Entry& entry) {
  Change change{.kind = Change::Kind::kAdd, .dn = entry.dn, .attributes = {}};
  for (const auto& [name, values] : entry.attributes) {
    change.attributes.push_back({.attribute = name, .wanted = values});
  }
  return change;
}

Change UndoOf(const Change& change) {
  Change undo{.dn = change.dn, .attributes = {}};
  if (!CanBeTakenBack(change)) return undo;
  undo.kind = UndoOf(change.kind);
  if (IsOfPlace(change.kind)) return UndoOfPlace(change);
  for (const ValueChange& value : change.attributes) {
    if (IsForGood(value)) continue;
    undo.attributes.push_back({.attribute = value.attribute,
                               .is_list = value.is_list,
                               .seen = value.wanted,
                               .wanted = FormerValues(value),
                               .is_whole = value.is_whole});
  }
  return undo;
}

std::vector<Change> UndosOf(const Change& change) {
  std::vector<Change> undos;
  if (change.is_kept && change.kind == Change::Kind::kRemove) {
    for (const ldap::Entry& entry : change.below) {
      Change& undo = undos.emplace_back(
          Change{.kind = Change::Kind::kRestore, .dn = entry.dn, .attributes = {}});
      for (const auto& [name, values] : entry.attributes) {
        undo.attributes.push_back({.attribute = name, .seen = values});
      }
    }
  }
  undos.push_back(UndoOf(change));
  return undos;
}

bool CanBeTakenBack(const Change& change) {
  if (change.kind == Change::Kind::kRemove) return change.is_kept;
  if (change.kind == Change::Kind::kModify && !change.attributes.empty()) {
    return !std::ranges::all_of(change.attributes, &IsForGood);
  }
  return change.kind != Change::Kind::kDelete || change.Find(kClasses) != nullptr;
}

ldap::Entry SeenIn(const Change& change) {
  ldap::Entry seen{.dn = change.dn, .attributes = {}};
  for (const ValueChange& value : change.attributes) {
    seen.attributes.insert_or_assign(value.attribute, value.seen);
  }
  return seen;
}

ldap::Entry WantedIn(const Change& change) {
  ldap::Entry wanted{.dn = change.dn, .attributes = {}};
  for (const ValueChange& value : change.attributes) {
    wanted.attributes.insert_or_assign(value.attribute, value.wanted);
  }
  return wanted;
}

}  // namespace pelora::changes
