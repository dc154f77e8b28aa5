// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/own_values.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "directory/ascii_case.h"
#include "directory/utf.h"
#include "hosts/ldap/case_fold.h"
#include "hosts/resources/mnemonic.h"
#include "hosts/session/password/password_bytes.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

constexpr std::size_t kLongestName = 64;

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
bool IsRefusedInLogonName(char character) {
  constexpr std::string_view kRefused = "\"/\\[]:;|=,+*?<>@";
  return static_cast<unsigned char>(character) < ' ' ||
         kRefused.find(character) != std::string_view::npos;
}

/// The label as a sentence names the field: without its colon.
std::string FieldName(std::string_view label) {
  return resources::WithoutMnemonic(label.substr(0, label.size() - 1));
}

std::string WhyNoAccountName(const NewObjectKind& kind, const std::string& name) {
  const std::string field = FieldName(kind.logon_label);
  if (name.empty()) {
    std::string asked = field;
    std::ranges::transform(asked, asked.begin(), AsciiLowerCase);
    return "Enter the " + asked + ".";
  }
  if (CharacterCount(name) > kind.longest_logon_name) {
    return field + ": " + std::to_string(kind.longest_logon_name) + " characters at most.";
  }
  if (std::ranges::any_of(name, &IsRefusedInLogonName)) {
    return field + ": none of \" / \\ [ ] : ; | = , + * ? < > @.";
  }
  if (name.ends_with('.')) return field + ": no full stop at the end.";
  return {};
}

/// Stages one value after the other until one fails. Empty texts are left out.
class Stager {
 public:
  explicit Stager(ldap::NewStoreObject& object) : object_(object) {}

  void Text(const char* name, const std::string& value) {
    if (SUCCEEDED(status_) && !value.empty()) status_ = object_.Put(name, Variant::String(value));
  }
  void Names(const char* name, const std::vector<DirectoryObject>& objects) {
    if (FAILED(status_) || objects.empty()) return;
    std::vector<std::string> dns;
    for (const DirectoryObject& object : objects) dns.push_back(object.dn);
    status_ = object_.Put(name, Variant::StringArray(dns));
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

/// The name of a user as the whole domain knows it; empty without a domain.
std::string PrincipalName(const OwnValues& values, const OwnContext& context) {
  return context.domain.empty() ? std::string() : Trimmed(values.logon_name) + "@" + context.domain;
}

void StageUser(const OwnValues& values, const OwnContext& context, Stager& stager) {
  stager.Text("userPrincipalName", PrincipalName(values, context));
  const bool has_password = context.takes_passwords && !values.password.empty();
  const bool is_enabled = has_password || !context.takes_passwords;
  stager.Number("userAccountControl",
                is_enabled ? kNormalAccount : kNormalAccount | kAccountDisabled);
  if (!has_password) return;
  stager.Bytes("unicodePwd", PasswordBytes(values.password.text()));
  if (values.must_change_password) stager.Bytes("pwdLastSet", "0");
}

std::int32_t GroupTypeOf(const OwnValues& values) {
  const std::uint32_t type =
      RowOf(values.scope).bit | (values.is_security_group ? kSecurityGroup : 0);
  return static_cast<std::int32_t>(type);
}

std::string NamesOf(const std::vector<DirectoryObject>& objects) {
  std::string names;
  for (const DirectoryObject& object : objects) {
    names += (names.empty() ? "" : "; ") + object.name;
  }
  return names;
}

std::string PasswordSummary(const OwnValues& values) {
  if (values.password.empty()) return "The account has no password yet and is disabled.";
  return values.must_change_password ? "The user must change the password at the next logon."
                                     : "The user has the password that was typed.";
}

}  // namespace

void ReadGroupType(std::int32_t group_type, OwnValues& values) {
  const auto bits = static_cast<std::uint32_t>(group_type);
  values.is_security_group = (bits & kSecurityGroup) != 0;
  for (std::size_t scope = 0; scope < kScopes.size(); ++scope) {
    if ((bits & kScopes[scope].bit) != 0) values.scope = static_cast<GroupScope>(scope);
  }
}

std::string FullName(std::string_view first_name, std::string_view last_name) {
  return Trimmed(Trimmed(first_name) + " " + Trimmed(last_name));
}

std::string SuggestedLogonName(const NewObjectKind& kind, std::string_view name) {
  if (kind.account != AccountForm::kGroup && kind.account != AccountForm::kComputer) return {};
  std::string suggested = Trimmed(name);
  if (kind.account == AccountForm::kComputer) {
    suggested = ldap::FoldCase(suggested);
    // The sign of a computer's account stands behind it in any case.
    while (suggested.ends_with('$')) suggested.pop_back();
  }
  std::ranges::replace_if(suggested, &IsRefusedInLogonName, '_');
  suggested = FirstCharacters(suggested, kind.longest_logon_name);
  while (suggested.ends_with('.') || suggested.ends_with(' ')) suggested.pop_back();
  return suggested;
}

std::string WhyNoLogonName(const NewObjectKind& kind, const OwnValues& values) {
  if (kind.account == AccountForm::kNone) return {};
  return WhyNoAccountName(kind, Trimmed(values.logon_name));
}

std::string WhyIncomplete(const NewObjectKind& kind, const OwnValues& values,
                          const OwnContext& context) {
  const std::string name = Trimmed(values.name);
  if (name.empty()) return "Enter a name.";
  if (CharacterCount(name) > kLongestName) {
    return "The name has more than " + std::to_string(kLongestName) + " characters.";
  }
  if (std::string reason = WhyNoLogonName(kind, values); !reason.empty()) return reason;
  const bool asks_for_password = kind.account == AccountForm::kUser && context.takes_passwords;
  if (asks_for_password && !(values.password == values.confirmation)) {
    return "The passwords must match.";
  }
  return {};
}

HRESULT StageOwnValues(const NewObjectKind& kind, const OwnValues& values,
                       const OwnContext& context, ldap::NewStoreObject& object) {
  Stager stager(object);
  if (kind.is_person) {
    stager.Text("givenName", Trimmed(values.first_name));
    stager.Text("sn", Trimmed(values.last_name));
    stager.Text("displayName", Trimmed(values.name));
  }
  const std::string logon_name = Trimmed(values.logon_name);
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
      stager.Names("member", values.members);
      break;
    case AccountForm::kComputer:
      stager.Text("sAMAccountName", logon_name + "$");
      stager.Number("userAccountControl", kWorkstationAccount);
      break;
  }
  return stager.status();
}

std::vector<std::string> SummaryOf(const NewObjectKind& kind, const OwnValues& values,
                                   const OwnContext& context) {
  const auto line = [](std::string_view label, const std::string& value) {
    return resources::WithoutMnemonic(label) + " " + value;
  };
  std::vector<std::string> lines;
  const auto add = [&](std::string_view label, const std::string& value) {
    if (!value.empty()) lines.push_back(line(label, value));
  };
  if (kind.is_person) {
    add("First name:", Trimmed(values.first_name));
    add("Last name:", Trimmed(values.last_name));
  }
  lines.push_back(line(kind.name_label, Trimmed(values.name)));
  if (kind.is_person) add("Display name:", Trimmed(values.name));
  if (kind.account != AccountForm::kNone) {
    lines.push_back(line(kind.logon_label, Trimmed(values.logon_name)));
  }
  if (kind.account == AccountForm::kUser) {
    add("User principal name:", PrincipalName(values, context));
  }
  if (kind.account == AccountForm::kGroup) {
    lines.push_back(line("Group scope:", RowOf(values.scope).text));
    lines.push_back(line("Group type:", values.is_security_group ? "Security" : "Distribution"));
    add("Members:", NamesOf(values.members));
  }
  if (kind.account == AccountForm::kUser && context.takes_passwords) {
    lines.push_back(PasswordSummary(values));
  }
  return lines;
}

}  // namespace pelora::session
