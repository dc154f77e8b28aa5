// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <stop_token>
#include <string>

#include "hosts/ldap/forwarding_store.h"
#include "hosts/ldap/network/domains_around.h"
#include "hosts/ldap/network/network_store.h"

namespace pelora::ldap {

/// Opens a store of a domain, on a controller of that domain's; as `StoreOpener` otherwise.
using DomainOpener =
    std::function<StoreStatus(const KnownDomain& domain, const std::stop_token& stop,
                              std::unique_ptr<IDirectoryStore>& store)>;

/// A directory with the domains around it: what is asked of an object of another domain, and what
/// is written to it, goes to a controller of that domain; everything else goes to the home server.
///
/// Which domains there are is read from the home server, unless the session knows it by then, and
/// not before a name comes that may be one of another domain. A name of a domain that is none of
/// these is the home server's to judge. Values are judged by the home server's schema: that of one
/// forest is the same everywhere.
class DomainsStore final : public ForwardingStore {
 public:
  DomainsStore(std::unique_ptr<NetworkStore> home, std::shared_ptr<DomainsAround> around,
               DomainOpener open);
  ~DomainsStore() override;

  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& entry) override;
  StoreStatus ReadMany(std::span<const std::string> dns, std::span<const std::string> attributes,
                       const ReadSink& sink) override;
  StoreStatus Search(const SearchRequest& request, const EntrySink& sink) override;
  StoreStatus Modify(const std::string& dn, std::span<const Modification> modifications) override;
  StoreStatus ModifyStrictly(const std::string& dn,
                             std::span<const Modification> modifications) override;
  /// What goes to another server than what is under way waits for it: everything is done in its
  /// order.
  void ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) override;
  StoreStatus Add(const Entry& entry) override;
  StoreStatus Delete(const Entry& made) override;
  StoreStatus Rename(const Entry& seen, const std::string& dn) override;
  StoreStatus Remove(const Entry& seen, Extent extent) override;
  StoreStatus Restore(const Entry& removed) override;
  void StopOn(const std::stop_token& stop) override;

 private:
  /// The store of the domain that an object lies in; null when it cannot be had. A timeout in
  /// opening it is none of a request (-1).
  IDirectoryStore* StoreOf(const std::string& dn, StoreStatus& status);
  /// Does something with that store.
  StoreStatus Ask(const std::string& dn,
                  const std::function<StoreStatus(IDirectoryStore& store)>& what);
  /// Whether an object may lie in another domain, as far as can be told from the home server's
  /// parts.
  [[nodiscard]] bool MayBeElsewhere(const std::string& dn) const;

  std::unique_ptr<NetworkStore> home_;
  std::shared_ptr<DomainsAround> around_;
  DomainOpener open_;
  std::stop_token stop_;
  /// By the domains' distinguished names.
  std::map<std::string, std::unique_ptr<IDirectoryStore>> stores_;
};

}  // namespace pelora::ldap
