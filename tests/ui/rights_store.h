// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <utility>

#include "hosts/ldap/forwarding_store.h"

namespace pelora::test {

/// Forwards to another store, and says of every object what may be written.
class RightsStore final : public ldap::ForwardingStore {
 public:
  RightsStore(ldap::IDirectoryStore& target, ldap::AttributeValues allowed)
      : ForwardingStore(target), allowed_(std::move(allowed)) {}

  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    ldap::StoreStatus status = ForwardingStore::Read(dn, attributes, entry);
    const bool asks =
        std::ranges::find(attributes, "allowedAttributesEffective") != attributes.end();
    if (asks) entry.attributes["allowedAttributesEffective"] = allowed_;
    return status;
  }
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override {
    return IDirectoryStore::ReadMany(dns, attributes, sink);
  }

 private:
  ldap::AttributeValues allowed_;
};

}  // namespace pelora::test
