// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/password/reset_password.h"

#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/wipe.h"
#include "hosts/session/password/password_bytes.h"

namespace pelora::session {
namespace {

constexpr const char* kNotSealed =
    "A password can be given only over a sealed connection to a server.";

struct Words {
  int code;
  std::string_view text;
};

constexpr auto kWords = std::to_array<Words>({
    {ldap::kLdapInsufficientAccessRights, "You have no right to reset this user's password."},
    {ldap::kLdapNoSuchObject, "The user has been deleted or moved."},
    {ldap::kLdapServerDown, "The connection is lost. The password is as it was."},
    {ldap::kLdapConnectError, "The connection is lost. The password is as it was."},
    {ldap::kLdapUserCancelled, "The password is as it was."},
    {ldap::kLdapTimeout,
     "It is not known whether the password was reset: the server did not answer."},
    {ldap::kLdapConfidentialityRequired, kNotSealed},
});

/// The words with which a server refuses a password for what it is begin with this number.
constexpr std::string_view kAgainstTheRules = "0000052D";

}  // namespace

std::string WhyNoPassword(const ldap::IDirectoryStore& store, std::size_t users) {
  if (!store.IsSealed()) return kNotSealed;
  if (users != 1) return "A password is given to one user at a time.";
  return {};
}

ldap::StoreStatus ResetPassword(ldap::IDirectoryStore& store, const std::string& dn,
                                const Secret& password, bool must_change) {
  if (!store.IsSealed()) return {ldap::kLdapConfidentialityRequired, kNotSealed};
  // No list of values: it would be copied.
  std::vector<ldap::Modification> request(1);
  request.reserve(2);
  request.front().attribute = "unicodePwd";
  request.front().values.push_back(PasswordBytes(password.text()));
  if (must_change) request.push_back({.attribute = "pwdLastSet", .values = {"0"}});
  ldap::StoreStatus status = store.Modify(dn, request);
  for (std::string& bytes : request.front().values) ldap::Wipe(bytes);
  return status;
}

std::string WhyNotReset(const ldap::StoreStatus& status) {
  if (status.text.starts_with(kAgainstTheRules)) {
    return "The directory does not take this password: it is too short or too plain, holds the "
           "user's name, or is one that he had before. The directory says: " +
           status.text;
  }
  for (const Words& words : kWords) {
    if (words.code == status.code) return std::string(words.text);
  }
  return "The directory does not take this password. It says: " + status.text;
}

}  // namespace pelora::session
