// SPDX-License-Identifier: Apache-2.0
#include "hosts/console/directory_browser.h"

#include <QStringList>

#include "hosts/console/choosers/search_filter.h"
#include "hosts/console/qt_text.h"

namespace pelora::console {
namespace {

const std::vector<std::string>& ShownAttributes() {
  static const std::vector<std::string> kAttributes = {"objectClass", "name", "description"};
  return kAttributes;
}

std::string FirstValue(const ldap::Entry& entry, std::string_view attribute) {
  const auto found = entry.attributes.find(attribute);
  if (found == entry.attributes.end() || found->second.empty()) return {};
  return found->second.front();
}

/// The name in the domain name system that a domain's distinguished name stands for.
QString DomainName(const std::string& dn) {
  QStringList labels;
  for (const QString& part : ToQString(dn).split(QLatin1Char(','))) {
    labels.append(part.section(QLatin1Char('='), 1));
  }
  return labels.join(QLatin1Char('.'));
}

QString NameOf(const ldap::Entry& entry, ObjectIcon icon) {
  if (icon == ObjectIcon::kDomain) return DomainName(entry.dn);
  const std::string name = FirstValue(entry, "name");
  return ToQString(name.empty() ? entry.dn : name);
}

/// What the directory itself can leave out: a container may hold many thousand objects.
std::string FilterOf(const ListRequest& request) {
  const std::string classes = request.containers_only ? ContainerFilter() : "(objectClass=*)";
  return request.advanced ? classes : WithoutHidden(classes);
}

}  // namespace

DirectoryObject ObjectOf(const ldap::Entry& entry) {
  const auto classes = entry.attributes.find("objectClass");
  DirectoryObject object;
  object.dn = entry.dn;
  object.kind = classes == entry.attributes.end() ? KindOf({}) : KindOf(classes->second);
  object.name = NameOf(entry, object.kind.icon);
  object.description = ToQString(FirstValue(entry, "description"));
  return object;
}

ldap::StoreStatus DirectoryBrowser::ReadBase(DirectoryObject& base) const {
  ldap::Entry root;
  if (ldap::StoreStatus status = store_.ReadRoot(root); !status.Ok()) return status;
  return ReadObject(FirstValue(root, "defaultNamingContext"), base);
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

}  // namespace pelora::console
