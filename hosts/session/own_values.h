// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/new_store_object.h"
#include "hosts/session/directory_browser.h"
#include "hosts/session/new_object_kind.h"
#include "hosts/session/secret.h"

namespace pelora::session {

/// Who may be in a group and where it may be used, in the order shown.
enum class GroupScope : std::uint8_t { kDomainLocal, kGlobal, kUniversal };

/// What a program asks for itself before the extensions' pages; of each kind only what it has. A
/// computer's logon name stands without its "$".
struct OwnValues {
  std::string first_name;
  std::string last_name;
  /// The object's name in its container.
  std::string name;
  std::string logon_name;
  GroupScope scope = GroupScope::kGlobal;
  bool is_security_group = true;
  /// Of a group: who is in it.
  std::vector<DirectoryObject> members{};
  Secret password;
  Secret confirmation;
  bool must_change_password = true;
};

/// What decides beside the values themselves.
struct OwnContext {
  /// Domain name behind the logon name of a user, in the form of the domain name system.
  std::string domain;
  /// The directory can be sent a password: only over a sealed connection.
  bool takes_passwords = false;
};

/// Takes the scope and the type of a group from its `groupType`.
void ReadGroupType(std::int32_t group_type, OwnValues& values);

/// The full name of a person.
[[nodiscard]] std::string FullName(std::string_view first_name, std::string_view last_name);
/// The logon name that follows from the name of a group or computer; empty for a user's.
[[nodiscard]] std::string SuggestedLogonName(const NewObjectKind& kind, std::string_view name);

/// Why an account cannot have the logon name of the values, as a sentence; empty when it can, and
/// for a kind without accounts.
[[nodiscard]] std::string WhyNoLogonName(const NewObjectKind& kind, const OwnValues& values);
/// Why no object can be made of the values, as a sentence; empty when one can.
[[nodiscard]] std::string WhyIncomplete(const NewObjectKind& kind, const OwnValues& values,
                                        const OwnContext& context);

/// Stages the values on a new object. The first failure ends it and is returned.
///
/// A user for whom the directory would take a password is enabled only with one. Without a sealed
/// connection no password is staged, whatever the values hold.
[[nodiscard]] HRESULT StageOwnValues(const NewObjectKind& kind, const OwnValues& values,
                                     const OwnContext& context, ldap::NewStoreObject& object);

/// Everything that is staged of the values, as the summary shows it, one line each. Of a password
/// only what follows from there being one.
[[nodiscard]] std::vector<std::string> SummaryOf(const NewObjectKind& kind, const OwnValues& values,
                                                 const OwnContext& context);

}  // namespace pelora::session
