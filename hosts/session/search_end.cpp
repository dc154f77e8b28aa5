// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/search_end.h"

#include "hosts/ldap/ldap_status.h"

namespace pelora::session {

SearchEnd EndOf(const ldap::StoreStatus& status) {
  switch (status.code) {
    case 0:
      return {SearchEnd::Reason::kComplete, {}};
    case ldap::kLdapTimeLimitExceeded:
    case ldap::kLdapSizeLimitExceeded:
    case ldap::kLdapAdminLimitExceeded:
      return {SearchEnd::Reason::kDirectoryLimit, {}};
    default:
      return {SearchEnd::Reason::kFailed, status.text};
  }
}

}  // namespace pelora::session
