// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/beside_store.h"

namespace pelora::session {
namespace {

constexpr const char* kReading = "Reading the directory...";
constexpr const char* kWriting = "Writing to the directory...";

}  // namespace

void BesideStore::Do(const char* what, const std::function<void()>& request) {
  // An errand's own requests are stopped as it has arranged.
  if (errands_.IsWithin()) return request();
  errands_.Run(what, [&](IErrand& errand) {
    store_.StopOn(errand.stop());
    request();
    store_.StopOn({});
  });
}

ldap::StoreStatus BesideStore::Ask(const char* what,
                                   const std::function<ldap::StoreStatus()>& request) {
  ldap::StoreStatus status;
  Do(what, [&] { status = request(); });
  return status;
}

ldap::StoreStatus BesideStore::ReadRoot(ldap::Entry& root) {
  return Ask(kReading, [&] { return store_.ReadRoot(root); });
}

ldap::StoreStatus BesideStore::Read(const std::string& dn, std::span<const std::string> attributes,
                                    ldap::Entry& entry) {
  return Ask(kReading, [&] { return store_.Read(dn, attributes, entry); });
}

ldap::StoreStatus BesideStore::ReadMany(std::span<const std::string> dns,
                                        std::span<const std::string> attributes,
                                        const ldap::ReadSink& sink) {
  if (dns.empty()) return {};
  return Ask(kReading, [&] { return store_.ReadMany(dns, attributes, sink); });
}

ldap::StoreStatus BesideStore::Search(const ldap::SearchRequest& request,
                                      const ldap::EntrySink& sink) {
  return Ask(kReading, [&] { return store_.Search(request, sink); });
}

ldap::StoreStatus BesideStore::Modify(const std::string& dn,
                                      std::span<const ldap::Modification> modifications) {
  return Ask(kWriting, [&] { return store_.Modify(dn, modifications); });
}

ldap::StoreStatus BesideStore::ModifyStrictly(const std::string& dn,
                                              std::span<const ldap::Modification> modifications) {
  return Ask(kWriting, [&] { return store_.ModifyStrictly(dn, modifications); });
}

void BesideStore::ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) {
  Do(kWriting, [&] { store_.ModifyManyStrictly(next, sink); });
}

ldap::StoreStatus BesideStore::Add(const ldap::Entry& entry) {
  return Ask(kWriting, [&] { return store_.Add(entry); });
}

ldap::StoreStatus BesideStore::Delete(const ldap::Entry& made) {
  return Ask(kWriting, [&] { return store_.Delete(made); });
}

ldap::StoreStatus BesideStore::Rename(const ldap::Entry& seen, const std::string& dn) {
  return Ask(kWriting, [&] { return store_.Rename(seen, dn); });
}

ldap::StoreStatus BesideStore::Remove(const ldap::Entry& seen, Extent extent) {
  return Ask(kWriting, [&] { return store_.Remove(seen, extent); });
}

ldap::StoreStatus BesideStore::Restore(const ldap::Entry& removed) {
  return Ask(kWriting, [&] { return store_.Restore(removed); });
}

}  // namespace pelora::session
