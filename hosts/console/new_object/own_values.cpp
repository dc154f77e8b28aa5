// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/new_object/own_values.h"

#include <algorithm>
#include <array>

#include "hosts/console/qt_text.h"

namespace pelora::console {
namespace {

constexpr qsizetype kLongestName = 64;

// Bits of `userAccountControl` and `groupType`.
constexpr std::int32_t kNormalAccount = 0x200;
constexpr std::int32_t kAccountDisabled = 0x2;
constexpr std::int32_t kWorkstationAccount = 0x1000;
constexpr std::uint32_t kSecurityGroup = 0x80000000U;

struct ScopeRow {
  std::uint32_t bit;
  const char* text;
};
/// By `GroupScope`.
constexpr std::array<ScopeRow, 3> kScopes = {
    {{4, "Domain local"}, {2, "Global"}, {8, "Universal"}}};

const ScopeRow& RowOf(GroupScope scope) { return kScopes.at(static_cast<std::size_t>(scope)); }

/// The directory takes none of these in the name of an account.
bool IsRefusedInLogonName(QChar character) {
  constexpr QStringView kRefused = u"\"/\\[]:;|=,+*?<>@";
  return character < QLatin1Char(' ') || kRefused.contains(character);
}

QString WhyNoLogonName(const NewObjectKind& kind, const QString& name) {
  const QString field = WithoutMnemonic(ToQString(kind.logon_label)).chopped(1);
  if (name.isEmpty()) return QStringLiteral("Enter the %1.").arg(field.toLower());
  if (name.size() > kind.longest_logon_name) {
    return QStringLiteral("%1: %2 characters at most.").arg(field).arg(kind.longest_logon_name);
  }
  if (std::ranges::any_of(name, &IsRefusedInLogonName)) {
    return QStringLiteral("%1: none of \" / \\ [ ] : ; | = , + * ? < > @.").arg(field);
  }
  if (name.endsWith(QLatin1Char('.'))) {
    return QStringLiteral("%1: no full stop at the end.").arg(field);
  }
  return {};
}

/// A password as the directory takes it: in quotation marks, in UTF-16.
std::string PasswordBytes(const QString& password) {
  std::string bytes;
  for (const QChar unit : QLatin1Char('"') + password + QLatin1Char('"')) {
    bytes += static_cast<char>(unit.unicode() & 0xFF);
    bytes += static_cast<char>(unit.unicode() >> 8);
  }
  return bytes;
}

/// Stages one value after the other until one fails. Empty texts are left out.
class Stager {
 public:
  explicit Stager(ldap::NewStoreObject& object) : object_(object) {}

  void Text(const char* name, const QString& value) {
    if (SUCCEEDED(status_) && !value.isEmpty()) {
      status_ = object_.Put(name, Variant::String(ToUtf8(value)));
    }
  }
  void Number(const char* name, std::int32_t value) {
    if (SUCCEEDED(status_)) status_ = object_.Put(name, Variant::Integer(value));
  }
  void Bytes(const char* name, std::string value) {
    if (SUCCEEDED(status_)) status_ = object_.PutBytes(name, std::move(value));
  }
  [[nodiscard]] HRESULT status() const { return status_; }

 private:
  ldap::NewStoreObject& object_;
  HRESULT status_ = S_OK;
};

void StageUser(const OwnValues& values, const OwnContext& context, Stager& stager) {
  const QString logon_name = values.logon_name.trimmed();
  if (!context.domain.isEmpty()) {
    stager.Text("userPrincipalName", logon_name + QLatin1Char('@') + context.domain);
  }
  const bool has_password = context.takes_passwords && !values.password.isEmpty();
  const bool is_enabled = has_password || !context.takes_passwords;
  stager.Number("userAccountControl",
                is_enabled ? kNormalAccount : kNormalAccount | kAccountDisabled);
  if (!has_password) return;
  stager.Bytes("unicodePwd", PasswordBytes(values.password));
  if (values.must_change_password) stager.Bytes("pwdLastSet", "0");
}

std::int32_t GroupTypeOf(const OwnValues& values) {
  const std::uint32_t type =
      RowOf(values.scope).bit | (values.is_security_group ? kSecurityGroup : 0);
  return static_cast<std::int32_t>(type);
}

QString PasswordSummary(const OwnValues& values) {
  if (values.password.isEmpty()) {
    return QStringLiteral("The account has no password yet and is disabled.");
  }
  return values.must_change_password
             ? QStringLiteral("The user must change the password at the next logon.")
             : QStringLiteral("The user has the password that was typed.");
}

}  // namespace

QString FullName(const QString& first_name, const QString& last_name) {
  return (first_name.trimmed() + QLatin1Char(' ') + last_name.trimmed()).trimmed();
}

QString SuggestedLogonName(const NewObjectKind& kind, const QString& name) {
  if (kind.account != AccountForm::kGroup && kind.account != AccountForm::kComputer) return {};
  QString suggested = name.trimmed();
  if (kind.account == AccountForm::kComputer) suggested = suggested.toUpper();
  for (QChar& character : suggested) {
    if (IsRefusedInLogonName(character)) character = QLatin1Char('_');
  }
  suggested.truncate(kind.longest_logon_name);
  while (suggested.endsWith(QLatin1Char('.')) || suggested.endsWith(QLatin1Char(' '))) {
    suggested.chop(1);
  }
  return suggested;
}

QString WhyIncomplete(const NewObjectKind& kind, const OwnValues& values,
                      const OwnContext& context) {
  const QString name = values.name.trimmed();
  if (name.isEmpty()) return QStringLiteral("Enter a name.");
  if (name.size() > kLongestName) {
    return QStringLiteral("The name has more than %1 characters.").arg(kLongestName);
  }
  if (kind.account != AccountForm::kNone) {
    QString reason = WhyNoLogonName(kind, values.logon_name.trimmed());
    if (!reason.isEmpty()) return reason;
  }
  const bool asks_for_password = kind.account == AccountForm::kUser && context.takes_passwords;
  if (asks_for_password && values.password != values.confirmation) {
    return QStringLiteral("The passwords must match.");
  }
  return {};
}

HRESULT StageOwnValues(const NewObjectKind& kind, const OwnValues& values,
                       const OwnContext& context, ldap::NewStoreObject& object) {
  Stager stager(object);
  if (kind.is_person) {
    stager.Text("givenName", values.first_name.trimmed());
    stager.Text("sn", values.last_name.trimmed());
    stager.Text("displayName", values.name.trimmed());
  }
  const QString logon_name = values.logon_name.trimmed();
  switch (kind.account) {
    case AccountForm::kNone:
      break;
    case AccountForm::kUser:
      stager.Text("sAMAccountName", logon_name);
      StageUser(values, context, stager);
      break;
    case AccountForm::kGroup:
      stager.Text("sAMAccountName", logon_name);
      stager.Number("groupType", GroupTypeOf(values));
      break;
    case AccountForm::kComputer:
      stager.Text("sAMAccountName", logon_name + QLatin1Char('$'));
      stager.Number("userAccountControl", kWorkstationAccount);
      break;
  }
  return stager.status();
}

QStringList SummaryOf(const NewObjectKind& kind, const OwnValues& values,
                      const OwnContext& context) {
  const auto line = [](std::string_view label, const QString& value) {
    return WithoutMnemonic(ToQString(label)) + QLatin1Char(' ') + value;
  };
  QStringList lines = {line(kind.name_label, values.name.trimmed())};
  if (kind.account != AccountForm::kNone) {
    lines.append(line(kind.logon_label, values.logon_name.trimmed()));
  }
  if (kind.account == AccountForm::kGroup) {
    lines.append(line("Group scope:", QString::fromLatin1(RowOf(values.scope).text)));
    lines.append(line("Group type:", values.is_security_group ? QStringLiteral("Security")
                                                              : QStringLiteral("Distribution")));
  }
  if (kind.account == AccountForm::kUser && context.takes_passwords) {
    lines.append(PasswordSummary(values));
  }
  return lines;
}

}  // namespace pelora::console
