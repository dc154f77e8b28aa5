// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/domains_around.h"

#include <utility>

namespace pelora::ldap {

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
  if (status.code < 0) return status;
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
