// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/domains_around.h"

#include <algorithm>
#include <array>
#include <utility>

#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {
namespace {

/// Whether the same question may have another answer soon.
bool IsForTheMoment(const StoreStatus& status) {
  constexpr auto kCodes = std::to_array<int>(
      {kLdapTimeLimitExceeded, kLdapAdminLimitExceeded, kLdapBusy, kLdapUnavailable});
  return status.code < 0 || std::ranges::find(kCodes, status.code) != kCodes.end();
}

}  // namespace

StoreStatus DomainsAround::Know(IDirectoryStore& store,
                                std::shared_ptr<const KnownDomains>& domains) {
  domains.reset();
  {
    const std::lock_guard lock(mutex_);
    if (told_) {
      domains = told_->domains;
      return told_->status;
    }
  }
  // Nobody waits for a server with the lock in hand.
  KnownDomains read;
  StoreStatus status = ReadKnownDomains(store, read);
  if (IsForTheMoment(status)) return status;
  domains = std::make_shared<const KnownDomains>(std::move(read));
  const std::lock_guard lock(mutex_);
  told_ = Told{.status = status, .domains = domains};
  return status;
}

void DomainsAround::Forget() {
  const std::lock_guard lock(mutex_);
  told_.reset();
}

}  // namespace pelora::ldap
