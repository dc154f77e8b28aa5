// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/life/recycle_bin.h"

#include <algorithm>
#include <string>
#include <vector>

#include "hosts/ldap/entry_values.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"

namespace pelora::session {
namespace {

const std::string kEnabledFeatures = "msDS-EnabledFeature";
constexpr const char* kFeature = "CN=Recycle Bin Feature";

}  // namespace

ldap::StoreStatus ReadKeepsDeleted(ldap::IDirectoryStore& store, bool& keeps) {
  keeps = false;
  ldap::Entry root;
  if (ldap::StoreStatus status = store.ReadRoot(root); !status.Ok()) return status;
  // Samba lets the feature be switched on and keeps what is deleted, but does not give it back
  // (measured: it wants to take off a mark that the object does not have).
  if (ldap::FirstValue(root, "vendorName").starts_with("Samba")) return {};
  const std::string configuration = ldap::FirstValue(root, "configurationNamingContext");
  if (configuration.empty()) return {};
  ldap::Entry partitions;
  ldap::StoreStatus status = store.Read("CN=Partitions," + configuration,
                                        std::vector<std::string>{kEnabledFeatures}, partitions);
  if (status.code == ldap::kLdapNoSuchObject) return {};
  const std::string wanted = ldap::NameKey(kFeature);
  keeps = std::ranges::any_of(ldap::ValuesOf(partitions, kEnabledFeatures),
                              [&wanted](const std::string& feature) {
                                return ldap::NameKey(ldap::FirstPart(feature)) == wanted;
                              });
  return status;
}

}  // namespace pelora::session
