// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/password/password_rules.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/text.h"

namespace pelora::session {
namespace {

constexpr const char* kLeast = "minPwdLength";
constexpr const char* kProperties = "pwdProperties";
constexpr const char* kOwnRules = "msDS-ResultantPSO";
/// A bit of `pwdProperties`.
constexpr std::int64_t kMixed = 0x1;
constexpr int kKindsAskedFor = 3;

bool IsIn(char sign, char first, char last) { return first <= sign && sign <= last; }
bool IsCapital(char sign) { return IsIn(sign, 'A', 'Z'); }
bool IsSmall(char sign) { return IsIn(sign, 'a', 'z'); }
bool IsDigit(char sign) { return IsIn(sign, '0', '9'); }
bool IsBeyondAscii(char sign) { return static_cast<unsigned char>(sign) > 0x7F; }
bool IsOther(char sign) {
  return !IsCapital(sign) && !IsSmall(sign) && !IsDigit(sign) && !IsBeyondAscii(sign);
}

bool IsMixed(std::string_view password) {
  // Which letters of which alphabet count as what is the directory's business.
  if (std::ranges::any_of(password, &IsBeyondAscii)) return true;
  constexpr std::array kKinds = {&IsCapital, &IsSmall, &IsDigit, &IsOther};
  const auto kinds = std::ranges::count_if(
      kKinds, [password](const auto is_kind) { return std::ranges::any_of(password, is_kind); });
  return kinds >= kKindsAskedFor;
}

std::string LeastText(std::size_t least) {
  return std::to_string(least) + (least == 1 ? " character" : " characters") + " at least";
}

constexpr const char* kMixedText =
    "three of these: capital letters, small letters, digits, other signs";

std::int64_t NumberOf(const ldap::Entry& entry, const char* attribute) {
  return ldap::ParseLargeInteger(ldap::FirstValue(entry, attribute)).value_or(0);
}

}  // namespace

PasswordRules ReadPasswordRules(ldap::IDirectoryStore& store, const std::string& dn) {
  PasswordRules rules;
  const std::array<std::string, 1> own = {kOwnRules};
  ldap::Entry user;
  if (store.Read(dn, own, user).Ok() && !ldap::FirstValue(user, kOwnRules).empty()) {
    rules.are_his_own = true;
    return rules;
  }
  ldap::Entry root;
  if (!store.ReadRoot(root).Ok()) return rules;
  const std::array<std::string, 2> asked = {kLeast, kProperties};
  ldap::Entry domain;
  if (!store.Read(ldap::FirstValue(root, "defaultNamingContext"), asked, domain).Ok()) return rules;
  rules.least = static_cast<std::size_t>(std::max<std::int64_t>(0, NumberOf(domain, kLeast)));
  rules.is_mixed = (NumberOf(domain, kProperties) & kMixed) != 0;
  return rules;
}

std::string TextOf(const PasswordRules& rules) {
  if (rules.are_his_own) return "Rules of his own hold for this user's password.";
  std::string text;
  if (rules.least > 0) text = LeastText(rules.least);
  if (rules.is_mixed) text += (text.empty() ? "" : ", and ") + std::string(kMixedText);
  return text.empty() ? text : "The domain asks for " + text + ".";
}

std::string WhyNotFit(const PasswordRules& rules, const Secret& password) {
  if (CharacterCount(password.text()) < rules.least) {
    return "The password is too short: " + LeastText(rules.least) + ".";
  }
  if (rules.is_mixed && !IsMixed(password.text())) {
    return std::string("The password is too plain: it needs ").append(kMixedText).append(".");
  }
  return {};
}

}  // namespace pelora::session
