// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/domains_store.h"

#include <cstddef>
#include <utility>

#include "directory/ascii_case.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/object_name.h"

namespace pelora::ldap {
namespace {

/// Whether the first part of a name is one of a domain's: `DC=north,...`.
bool IsOfDomain(std::string_view part) { return EqualsWithoutCase(part.substr(0, 3), "DC="); }

/// The last part of a name.
std::string_view LastPart(std::string_view dn) {
  std::string_view last = dn;
  for (std::string_view rest = dn; !rest.empty(); rest = ContainerOf(rest)) last = rest;
  return last;
}

}  // namespace

DomainsStore::DomainsStore(std::unique_ptr<NetworkStore> home,
                           std::shared_ptr<DomainsAround> around, DomainOpener open)
    : ForwardingStore(*home),
      home_(std::move(home)),
      around_(std::move(around)),
      open_(std::move(open)) {
  home_->WhenLost([around = around_] { around->Forget(); });
}

DomainsStore::~DomainsStore() = default;

bool DomainsStore::MayBeElsewhere(const std::string& dn) const {
  // The root, and names by number.
  if (dn.empty() || dn.starts_with('<')) return false;
  const std::string& base = home_->contexts().BaseOf(dn);
  if (base.empty()) return true;
  // A server may have a part of other domains, too.
  if (IsOfDomain(base) && !EqualsWithoutCase(base, home_->own_base())) return true;
  if (base.size() >= dn.size()) return false;
  // Domains lie below domains.
  return IsOfDomain(LastPart(std::string_view(dn).substr(0, dn.size() - base.size() - 1)));
}

IDirectoryStore* DomainsStore::StoreOf(const std::string& dn, StoreStatus& status) {
  status = {};
  if (!MayBeElsewhere(dn)) return home_.get();
  std::shared_ptr<const KnownDomains> domains;
  static_cast<void>(around_->Know(*home_, domains));
  // One that cannot be reached or is too busy has not told, and will say so itself.
  const KnownDomain* const domain = domains == nullptr ? nullptr : domains->DomainOf(dn);
  if (domain == nullptr) return home_.get();
  std::unique_ptr<IDirectoryStore>& store = stores_[domain->base];
  if (store == nullptr) {
    status = open_(*domain, stop_, store);
    if (status.code == kLdapTimeout) status.code = kLdapServerDown;
    if (!status.Ok()) {
      status.text = "no controller of the domain '" + domain->name + "': " + status.text;
      return nullptr;
    }
  }
  return store.get();
}

StoreStatus DomainsStore::Ask(const std::string& dn,
                              const std::function<StoreStatus(IDirectoryStore& store)>& what) {
  StoreStatus status;
  IDirectoryStore* const store = StoreOf(dn, status);
  return store == nullptr ? status : what(*store);
}

StoreStatus DomainsStore::Read(const std::string& dn, std::span<const std::string> attributes,
                               Entry& entry) {
  return Ask(dn, [&](IDirectoryStore& store) { return store.Read(dn, attributes, entry); });
}

StoreStatus DomainsStore::ReadMany(std::span<const std::string> dns,
                                   std::span<const std::string> attributes, const ReadSink& sink) {
  bool is_ended = false;
  const ReadSink watched = [&](StoreStatus status, Entry entry) {
    is_ended = !sink(std::move(status), std::move(entry));
    return !is_ended;
  };
  while (!dns.empty() && !is_ended) {
    StoreStatus status;
    IDirectoryStore* const store = StoreOf(dns.front(), status);
    std::size_t count = 1;
    if (store == nullptr) {
      watched(std::move(status), {});
    } else {
      // As many as follow each other in one domain are asked for together.
      while (count < dns.size() && StoreOf(dns[count], status) == store) ++count;
      status = store->ReadMany(dns.first(count), attributes, watched);
      if (!status.Ok()) return status;
    }
    dns = dns.subspan(count);
  }
  return {};
}

StoreStatus DomainsStore::Search(const SearchRequest& request, const EntrySink& sink) {
  return Ask(request.base, [&](IDirectoryStore& store) { return store.Search(request, sink); });
}

StoreStatus DomainsStore::Modify(const std::string& dn,
                                 std::span<const Modification> modifications) {
  return Ask(dn, [&](IDirectoryStore& store) { return store.Modify(dn, modifications); });
}

StoreStatus DomainsStore::ModifyStrictly(const std::string& dn,
                                         std::span<const Modification> modifications) {
  return Ask(dn, [&](IDirectoryStore& store) { return store.ModifyStrictly(dn, modifications); });
}

void DomainsStore::ModifyManyStrictly(const ModifySource& next, const ModifySink& sink) {
  std::optional<ModifyRequest> waiting = next();
  while (waiting) {
    StoreStatus status;
    IDirectoryStore* const store = StoreOf(waiting->dn, status);
    if (store == nullptr) {
      sink(std::move(status));
      waiting = next();
      continue;
    }
    bool is_first = true;
    store->ModifyManyStrictly(
        [&]() -> std::optional<ModifyRequest> {
          // What the store that is asked has not fetched yet waits for the next turn.
          if (!std::exchange(is_first, false)) {
            if (!waiting) waiting = next();
            if (!waiting || StoreOf(waiting->dn, status) != store) return std::nullopt;
          }
          return std::exchange(waiting, std::nullopt);
        },
        sink);
  }
}

StoreStatus DomainsStore::Add(const Entry& entry) {
  return Ask(entry.dn, [&](IDirectoryStore& store) { return store.Add(entry); });
}

StoreStatus DomainsStore::Delete(const Entry& made) {
  return Ask(made.dn, [&](IDirectoryStore& store) { return store.Delete(made); });
}

StoreStatus DomainsStore::Rename(const Entry& seen, const std::string& dn) {
  return Ask(seen.dn, [&](IDirectoryStore& store) { return store.Rename(seen, dn); });
}

StoreStatus DomainsStore::Remove(const Entry& seen, Extent extent) {
  return Ask(seen.dn, [&](IDirectoryStore& store) { return store.Remove(seen, extent); });
}

StoreStatus DomainsStore::Restore(const Entry& removed) {
  return Ask(removed.dn, [&](IDirectoryStore& store) { return store.Restore(removed); });
}

void DomainsStore::StopOn(const std::stop_token& stop) {
  stop_ = stop;
  home_->StopOn(stop);
  for (const auto& [base, store] : stores_) {
    if (store != nullptr) store->StopOn(stop);
  }
}

}  // namespace pelora::ldap
