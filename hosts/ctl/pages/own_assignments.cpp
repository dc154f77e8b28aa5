// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/own_assignments.h"

#include <algorithm>
#include <array>

#include "directory/ascii_case.h"
#include "hosts/ctl/fields/wish_maker.h"

namespace pelora::ctl {
namespace {

using session::AccountForm;
using session::GroupScope;
using session::NewObjectKind;

void TakeFirstName(OwnAssignments& own, const std::string& value) { own.values.first_name = value; }
void TakeLastName(OwnAssignments& own, const std::string& value) { own.values.last_name = value; }
void TakeDisplayName(OwnAssignments& own, const std::string& value) { own.display_name = value; }
void TakeLogonName(OwnAssignments& own, const std::string& value) { own.values.logon_name = value; }

struct GroupWord {
  std::string_view word;
  GroupScope scope;
};
constexpr std::array<GroupWord, 3> kGroupWords = {{{"domain-local", GroupScope::kDomainLocal},
                                                   {"global", GroupScope::kGlobal},
                                                   {"universal", GroupScope::kUniversal}}};

void TakeGroupType(OwnAssignments& own, const std::string& value) {
  for (const GroupWord& group : kGroupWords) {
    const std::string word(group.word);
    const bool is_distribution = EqualsWithoutCase(value, word + "-distribution");
    const bool is_security =
        EqualsWithoutCase(value, word) || EqualsWithoutCase(value, word + "-security");
    if (!is_distribution && !is_security) continue;
    own.values.scope = group.scope;
    own.values.is_security_group = is_security;
    return;
  }
  throw Refusal(
      "groupType: neither global, domain-local nor universal, with or without -security "
      "or -distribution: " +
      value);
}

bool IsPerson(const NewObjectKind& kind) { return kind.is_person; }
bool HasAccount(const NewObjectKind& kind) { return kind.account != AccountForm::kNone; }
bool IsGroup(const NewObjectKind& kind) { return kind.account == AccountForm::kGroup; }

struct OwnField {
  std::string_view name;
  bool (*is_of)(const NewObjectKind& kind);
  void (*take)(OwnAssignments& own, const std::string& value);
};
constexpr std::array<OwnField, 5> kOwnFields = {{
    {"sAMAccountName", &HasAccount, &TakeLogonName},
    {"givenName", &IsPerson, &TakeFirstName},
    {"sn", &IsPerson, &TakeLastName},
    {"displayName", &IsPerson, &TakeDisplayName},
    {"groupType", &IsGroup, &TakeGroupType},
}};

const OwnField* FindOwn(const std::string& name) {
  const auto found = std::ranges::find_if(
      kOwnFields, [&name](const OwnField& field) { return EqualsWithoutCase(field.name, name); });
  return found == kOwnFields.end() ? nullptr : &*found;
}

}  // namespace

bool IsOwnField(const std::string& field) { return FindOwn(field) != nullptr; }

OwnAssignments TakeOwn(const NewObjectKind& kind, const std::string& name,
                       std::vector<Assignment>& assignments) {
  OwnAssignments own;
  own.values.name = name;
  for (const Assignment& assignment : assignments) {
    const OwnField* field = FindOwn(assignment.field);
    if (field == nullptr || assignment.value.empty()) continue;
    if (!field->is_of(kind)) {
      throw Refusal(assignment.field + ": objects of the class " + std::string(kind.word) +
                    " have no such field");
    }
    field->take(own, assignment.value);
  }
  std::erase_if(assignments,
                [](const Assignment& assignment) { return FindOwn(assignment.field) != nullptr; });
  std::string& logon_name = own.values.logon_name;
  // The directory's sign of a computer's account is added to every one.
  const bool is_computer = kind.account == AccountForm::kComputer;
  if (is_computer && logon_name.ends_with('$')) logon_name.pop_back();
  if (logon_name.empty()) logon_name = session::SuggestedLogonName(kind, name);
  return own;
}

}  // namespace pelora::ctl
