// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/network/known_domains.h"

#include <algorithm>
#include <utility>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"

namespace pelora::ldap {
namespace {

/// Parts of the forest's directory that are domains.
constexpr const char* kDomainParts =
    "(&(objectClass=crossRef)(systemFlags:1.2.840.113556.1.4.803:=3))";
/// Domains of this kind outside of the forest, whose users are trusted here.
constexpr const char* kTrusts =
    "(&(objectClass=trustedDomain)(trustType=2)(trustDirection:1.2.840.113556.1.4.803:=2)"
    "(!(trustAttributes:1.2.840.113556.1.4.803:=32)))";

/// "north.example.org" as "DC=north,DC=example,DC=org".
std::string BaseOfDomain(const std::string& name) {
  std::string base;
  for (std::size_t begin = 0; begin <= name.size();) {
    const std::size_t end = std::min(name.find('.', begin), name.size());
    if (!base.empty()) base += ',';
    base += "DC=";
    base += EscapeNameValue(std::string_view(name).substr(begin, end - begin));
    begin = end + 1;
  }
  return base;
}

bool IsSameOrBelow(const std::string& dn, const std::string& base) {
  const std::string key = NameKey(dn);
  const std::string above = NameKey(base);
  return key == above || LiesBelow(key, above);
}

StoreStatus ReadForest(IDirectoryStore& store, const Entry& root, KnownDomains& domains) {
  const std::string forest = NameKey(FirstValue(root, "rootDomainNamingContext"));
  return store.Search({.base = "CN=Partitions," + FirstValue(root, "configurationNamingContext"),
                       .scope = SearchScope::kOneLevel,
                       .filter = kDomainParts,
                       .attributes = {"nCName", "dnsRoot"}},
                      [&](const Entry& entry) {
                        KnownDomain domain{.name = FirstValue(entry, "dnsRoot"),
                                           .base = FirstValue(entry, "nCName"),
                                           .is_of_forest = true};
                        if (domain.name.empty() || domain.base.empty()) return true;
                        if (NameKey(domain.base) == forest) domains.forest_name = domain.name;
                        if (NameKey(domain.base) == NameKey(domains.own_base)) {
                          domains.own_name = std::move(domain.name);
                        } else {
                          domains.others.push_back(std::move(domain));
                        }
                        return true;
                      });
}

StoreStatus ReadTrusted(IDirectoryStore& store, KnownDomains& domains) {
  return store.Search({.base = "CN=System," + domains.own_base,
                       .scope = SearchScope::kOneLevel,
                       .filter = kTrusts,
                       .attributes = {"trustPartner"}},
                      [&](const Entry& entry) {
                        const std::string name = FirstValue(entry, "trustPartner");
                        if (!name.empty()) {
                          domains.others.push_back({.name = name, .base = BaseOfDomain(name)});
                        }
                        return true;
                      });
}

}  // namespace

const KnownDomain* KnownDomains::DomainOf(const std::string& dn) const {
  const KnownDomain* deepest = nullptr;
  std::size_t depth = IsSameOrBelow(dn, own_base) ? NameKey(own_base).size() : 0;
  for (const KnownDomain& domain : others) {
    const std::size_t length = NameKey(domain.base).size();
    if (length <= depth || !IsSameOrBelow(dn, domain.base)) continue;
    deepest = &domain;
    depth = length;
  }
  return deepest;
}

StoreStatus ReadKnownDomains(IDirectoryStore& store, KnownDomains& domains) {
  domains = {};
  KnownDomains read;
  Entry root;
  StoreStatus status = store.ReadRoot(root);
  if (!status.Ok()) return status;
  read.own_base = FirstValue(root, "defaultNamingContext");
  if (FirstValue(root, "isGlobalCatalogReady") == "TRUE") {
    read.catalog_host = FirstValue(root, "dnsHostName");
  }
  status = ReadForest(store, root, read);
  // Whoever may not see one of the containers sees no domains there.
  if (status.Ok() || status.code == kLdapNoSuchObject) status = ReadTrusted(store, read);
  if (!status.Ok() && status.code != kLdapNoSuchObject) return status;
  domains = std::move(read);
  return {};
}

}  // namespace pelora::ldap
