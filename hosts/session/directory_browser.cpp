// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/directory_browser.h"

#include "hosts/ldap/entry_values.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/search_filter.h"

namespace pelora::session {
namespace {

const std::vector<std::string>& ShownAttributes() {
  static const std::vector<std::string> kAttributes = {"objectClass", "name", "description"};
  return kAttributes;
}

std::string NameOf(const ldap::Entry& entry, ObjectIcon icon) {
  if (icon == ObjectIcon::kDomain) return AsFolder(entry.dn);
  std::string name = ldap::FirstValue(entry, "name");
  return name.empty() ? entry.dn : name;
}

/// What the directory itself can leave out: a container may hold many thousand objects.
std::string FilterOf(const ListRequest& request) {
  const std::string classes = request.containers_only ? ContainerFilter() : "(objectClass=*)";
  return request.advanced ? classes : WithoutHidden(classes);
}

}  // namespace

DirectoryObject ObjectOf(const ldap::Entry& entry) {
  DirectoryObject object;
  object.dn = entry.dn;
  object.kind = KindOf(ldap::ValuesOf(entry, "objectClass"));
  object.name = NameOf(entry, object.kind.icon);
  object.description = ldap::FirstValue(entry, "description");
  return object;
}

ldap::StoreStatus DirectoryBrowser::ReadBase(DirectoryObject& base) const {
  ldap::Entry root;
  if (ldap::StoreStatus status = store_.ReadRoot(root); !status.Ok()) return status;
  return ReadObject(ldap::FirstValue(root, "defaultNamingContext"), base);
}

ldap::StoreStatus DirectoryBrowser::ReadObject(const std::string& dn,
                                               DirectoryObject& object) const {
  ldap::Entry entry;
  if (ldap::StoreStatus status = store_.Read(dn, ShownAttributes(), entry); !status.Ok()) {
    return status;
  }
  object = ObjectOf(entry);
  return {};
}

ldap::StoreStatus DirectoryBrowser::ListChildren(const ListRequest& request,
                                                 const ObjectSink& sink) const {
  const auto take = [&](const ldap::Entry& entry) {
    DirectoryObject object = ObjectOf(entry);
    if (object.kind.is_internal) return true;
    if (request.containers_only && !object.kind.is_container) return true;
    return sink(std::move(object));
  };
  return store_.Search({.base = request.container,
                        .scope = ldap::SearchScope::kOneLevel,
                        .filter = FilterOf(request),
                        .attributes = ShownAttributes()},
                       take);
}

}  // namespace pelora::session
