// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/domain_controllers.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "hosts/ldap/name_key.h"
#include "hosts/ldap/network/domain_servers.h"
#include "hosts/ldap/network/network_store.h"

namespace pelora::ldap {
namespace {

ServerFinder FindCatalogs(const std::string& host, const std::string& forest,
                          std::chrono::milliseconds timeout) {
  return [=](const std::stop_token& /*stop*/, DomainServers& found) {
    if (!host.empty()) found.servers.push_back({.name = {.host = host, .port = kCatalogPort}});
    std::vector<ServerName> others;
    StoreStatus status = FindCatalogServers(forest, timeout, others);
    for (ServerName& other : others) found.servers.push_back({.name = std::move(other)});
    return found.servers.empty() ? status : StoreStatus{};
  };
}

/// Names of which none lies below another.
std::vector<std::string> Topmost(const std::vector<std::string>& names) {
  std::vector<std::string> topmost;
  std::ranges::copy_if(names, std::back_inserter(topmost), [&](const std::string& name) {
    return std::ranges::none_of(names, [&name](const std::string& other) {
      return LiesBelow(NameKey(name), NameKey(other));
    });
  });
  return topmost;
}

}  // namespace

DomainControllers::DomainControllers(NetworkOptions options, std::shared_ptr<SchemaCache> schemas,
                                     RealmServerFinder find)
    : options_(std::move(options)), schemas_(std::move(schemas)), find_(std::move(find)) {}

std::shared_ptr<ServerChoice> DomainControllers::ChoiceFor(const KnownDomain& domain) {
  const std::lock_guard lock(mutex_);
  std::shared_ptr<ServerChoice>& choice = choices_[domain.name];
  if (choice != nullptr) return choice;
  NetworkOptions options = options_;
  options.server.clear();
  options.realm = RealmOfDomain(domain.name);
  // Sites are a forest's.
  if (!domain.is_of_forest) options.site.clear();
  choice = std::make_shared<ServerChoice>(options, find_(options, options.realm));
  return choice;
}

StoreStatus DomainControllers::Open(const KnownDomain& domain, const std::stop_token& stop,
                                    std::unique_ptr<IDirectoryStore>& store) {
  std::unique_ptr<NetworkStore> opened;
  StoreStatus status = NetworkStore::Open(ChoiceFor(domain), schemas_, stop, opened);
  store = std::move(opened);
  return status;
}

StoreStatus DomainControllers::OpenCatalog(const KnownDomains& domains, const std::stop_token& stop,
                                           std::unique_ptr<IDirectoryStore>& store) {
  NetworkOptions options = options_;
  options.server.clear();
  options.is_catalog = true;
  auto choice = std::make_shared<ServerChoice>(
      options, FindCatalogs(domains.catalog_host, domains.forest_name, options.connect_timeout));
  std::unique_ptr<NetworkStore> opened;
  StoreStatus status = NetworkStore::Open(std::move(choice), schemas_, stop, opened);
  store = std::move(opened);
  return status;
}

PlaceFinder FindSearchPlaces(StoreOpener own, std::shared_ptr<DomainControllers> controllers,
                             std::shared_ptr<DomainsAround> around) {
  return [own = std::move(own), controllers = std::move(controllers), around = std::move(around)](
             IDirectoryStore& store, std::vector<SearchPlace>& places) {
    places.clear();
    std::shared_ptr<const KnownDomains> known;
    StoreStatus status = around->Know(store, known);
    if (!status.Ok()) return status;
    const KnownDomains& domains = *known;
    const StoreOpener in_catalog = [controllers, domains](std::unique_ptr<IDirectoryStore>& opened,
                                                          const std::stop_token& stop) {
      return controllers->OpenCatalog(domains, stop, opened);
    };
    places.push_back({.domain = domains.own_name, .bases = {domains.own_base}, .open = own});
    SearchPlace forest{.domain = {}, .bases = {domains.own_base}, .open = in_catalog};
    for (const KnownDomain& domain : domains.others) {
      if (domain.is_of_forest) forest.bases.push_back(domain.base);
    }
    const bool is_alone = forest.bases.size() == 1;
    forest.bases = Topmost(forest.bases);
    if (!is_alone) places.push_back(std::move(forest));
    for (const KnownDomain& domain : domains.others) {
      const StoreOpener on_its_own = [controllers, domain](std::unique_ptr<IDirectoryStore>& opened,
                                                           const std::stop_token& stop) {
        return controllers->Open(domain, stop, opened);
      };
      places.push_back({.domain = domain.name,
                        .bases = {domain.base},
                        .open = domain.is_of_forest ? in_catalog : on_its_own});
    }
    return StoreStatus{};
  };
}

}  // namespace pelora::ldap
