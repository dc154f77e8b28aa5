// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/directory_browser.h"

#include "directory/ascii_case.h"
#include "hosts/ldap/attribute_value.h"
#include "hosts/ldap/entry_values.h"
#include "hosts/session/folder_name.h"
#include "hosts/session/search_filter.h"

namespace pelora::session {
namespace {

/// What the mark of an object follows from.
constexpr std::string_view kAccount = "peloraAccount";
constexpr std::string_view kResourceType = "peloraResourceType";
constexpr std::string_view kSharedStoreOnly = "peloraSharedStoreOnly";
constexpr std::string_view kAccountControl = "userAccountControl";
constexpr std::int64_t kAccountDisabled = 2;

std::int64_t Number(const ldap::Entry& entry, std::string_view attribute) {
  return ldap::ParseLargeInteger(ldap::FirstValue(entry, attribute)).value_or(0);
}

ObjectMark MarkOfUser(const ldap::Entry& entry) {
  const std::string resource = ldap::FirstValue(entry, kResourceType);
  if (EqualsWithoutCase(resource, "room")) return ObjectMark::kRoom;
  if (EqualsWithoutCase(resource, "equipment")) return ObjectMark::kEquipment;
  if (Number(entry, kSharedStoreOnly) != 0) return ObjectMark::kSharedStore;
  if ((Number(entry, kAccountControl) & kAccountDisabled) != 0) return ObjectMark::kDisabled;
  return Number(entry, kAccount) == 0 ? ObjectMark::kNoMailbox : ObjectMark::kNone;
}

ObjectMark MarkOf(const ldap::Entry& entry, ObjectIcon icon) {
  if (icon == ObjectIcon::kUser) return MarkOfUser(entry);
  const bool is_server = icon == ObjectIcon::kComputer && Number(entry, kAccount) != 0;
  return is_server ? ObjectMark::kServer : ObjectMark::kNone;
}

std::string NameOf(const ldap::Entry& entry, ObjectIcon icon) {
  if (icon == ObjectIcon::kDomain) return AsFolder(entry.dn);
  std::string name = ldap::FirstValue(entry, "name");
  return name.empty() ? OwnNameOf(entry.dn) : name;
}

/// What the directory itself can leave out: a container may hold many thousand objects.
std::string FilterOf(const ListRequest& request) {
  const std::string classes = request.containers_only ? ContainerFilter() : "(objectClass=*)";
  return request.advanced ? classes : WithoutHidden(classes);
}

}  // namespace

const std::vector<std::string>& ObjectAttributes() {
  static const std::vector<std::string> kAttributes = {"objectClass",
                                                       "name",
                                                       "description",
                                                       std::string(kAccount),
                                                       std::string(kResourceType),
                                                       std::string(kSharedStoreOnly),
                                                       std::string(kAccountControl)};
  return kAttributes;
}

DirectoryObject ObjectOf(const ldap::Entry& entry) {
  DirectoryObject object;
  object.dn = entry.dn;
  object.kind = KindOf(ldap::ValuesOf(entry, "objectClass"));
  object.name = NameOf(entry, object.kind.icon);
  object.description = ldap::FirstValue(entry, "description");
  object.mark = MarkOf(entry, object.kind.icon);
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
  if (ldap::StoreStatus status = store_.Read(dn, ObjectAttributes(), entry); !status.Ok()) {
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
                        .attributes = ObjectAttributes()},
                       take);
}

}  // namespace pelora::session
