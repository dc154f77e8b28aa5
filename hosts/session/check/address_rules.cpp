// SPDX-License-Identifier: Apache-2.0
// What can be wrong with mail addresses.
#include "hosts/ldap/case_fold.h"
#include "hosts/session/check/mail_address.h"
#include "hosts/session/check/rule_functions.h"

namespace pelora::session::rules {
namespace {

constexpr std::string_view kDefault = "mail";
constexpr std::string_view kOthers = "otherMailbox";
constexpr std::string_view kResourceType = "peloraResourceType";

/// What the page calls an account that is no resource, no shared store and no administrator.
constexpr std::string_view kActiveUser = "active user";

std::string NameList(const ldap::AttributeValues& values) {
  std::string list;
  for (const std::string& value : values) list += (list.empty() ? "" : ", ") + value;
  return list;
}

}  // namespace

void AddressDuplicate(const CheckedObject& object, CheckNotes& notes) {
  for (const std::string_view attribute : {kDefault, kOthers}) {
    for (const std::string& address : object.Values(attribute)) notes.HasAddress(address);
  }
}

void AddressMissing(const CheckedObject& object, CheckNotes& notes) {
  if (!object.Values(kDefault).empty() || !object.Values(kOthers).empty()) return;
  if (!object.HasAccount() || object.ChoiceOf(kResourceType) != kActiveUser) return;
  notes.Found("an active user without an address");
}

void AddressSyntax(const CheckedObject& object, CheckNotes& notes) {
  for (const std::string_view attribute : {kDefault, kOthers}) {
    for (const std::string& address : object.Values(attribute)) {
      if (IsMailAddress(address)) continue;
      notes.Found(std::string(attribute) + ": " + address + " is no address");
    }
  }
}

void DefaultInOthers(const CheckedObject& object, CheckNotes& notes) {
  const std::string address = ldap::FoldCase(object.Text(kDefault));
  if (address.empty()) return;
  ldap::AttributeValues repeated;
  for (const std::string& other : object.Values(kOthers)) {
    if (ldap::FoldCase(other) == address) repeated.push_back(other);
  }
  if (repeated.empty()) return;
  std::string message =
      NameList(repeated) + " is the default address and stands in otherMailbox too";
  if (object.CanTakeOut(kOthers)) {
    notes.Found(std::move(message), TakingOut(kOthers, std::move(repeated)));
  } else {
    notes.Found(std::move(message));
  }
}

}  // namespace pelora::session::rules
