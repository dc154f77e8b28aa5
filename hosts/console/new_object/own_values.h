// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QString>
#include <QStringList>

#include "hosts/console/new_object/new_object_kind.h"
#include "hosts/ldap/new_store_object.h"

namespace pelora::console {

/// Who may be in a group and where it may be used, in the order shown.
enum class GroupScope : std::uint8_t { kDomainLocal, kGlobal, kUniversal };

/// What the console's own first page asks for; of each kind only what it has.
struct OwnValues {
  QString first_name;
  QString last_name;
  /// The object's name in its container.
  QString name;
  QString logon_name;
  GroupScope scope = GroupScope::kGlobal;
  bool is_security_group = true;
  QString password;
  QString confirmation;
  bool must_change_password = true;
};

/// What decides beside the values themselves.
struct OwnContext {
  /// Domain name behind the logon name of a user, in the form of the domain name system.
  QString domain;
  /// The directory can be sent a password: only over a sealed connection.
  bool takes_passwords = false;
};

/// The full name of a person.
[[nodiscard]] QString FullName(const QString& first_name, const QString& last_name);
/// The logon name that follows from the name of a group or computer; empty for a user's.
[[nodiscard]] QString SuggestedLogonName(const NewObjectKind& kind, const QString& name);

/// Why no object can be made of the values, as a sentence; empty when one can.
[[nodiscard]] QString WhyIncomplete(const NewObjectKind& kind, const OwnValues& values,
                                    const OwnContext& context);

/// Stages the values on a new object. The first failure ends it and is returned.
///
/// A user for whom the directory would take a password is enabled only with one. Without a sealed
/// connection no password is staged, whatever the values hold.
[[nodiscard]] HRESULT StageOwnValues(const NewObjectKind& kind, const OwnValues& values,
                                     const OwnContext& context, ldap::NewStoreObject& object);

/// The values as the summary shows them, one line each. Of a password only what follows from there
/// being one.
[[nodiscard]] QStringList SummaryOf(const NewObjectKind& kind, const OwnValues& values,
                                    const OwnContext& context);

}  // namespace pelora::console
