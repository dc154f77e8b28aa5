// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/session/object_class.h"

namespace pelora::session {

/// One object of the directory, as the console lists it.
struct DirectoryObject {
  std::string dn;
  std::string name;
  std::string description;
  ObjectKind kind;
  ObjectMark mark = ObjectMark::kNone;
};

/// The attributes that `ObjectOf` looks at.
[[nodiscard]] const std::vector<std::string>& ObjectAttributes();
/// The object of an entry. Of one that was read without some of `ObjectAttributes` less is known.
[[nodiscard]] DirectoryObject ObjectOf(const ldap::Entry& entry);

/// What is to be listed.
struct ListRequest {
  std::string container;
  /// Leave out what is no container.
  bool containers_only = false;
  /// Objects that the directory says are for an advanced view only, too.
  bool advanced = false;

  [[nodiscard]] bool operator==(const ListRequest&) const = default;
};

/// Takes listed objects one by one; false ends the listing (which is then done, not failed).
using ObjectSink = std::function<bool(DirectoryObject object)>;

/// Finds the objects that the console lists, in a store that outlives the browser.
///
/// On failure the store's status is returned and the result is left as it was.
class DirectoryBrowser {
 public:
  explicit DirectoryBrowser(ldap::IDirectoryStore& store) : store_(store) {}

  /// The directory's base, which is the root of the tree.
  ldap::StoreStatus ReadBase(DirectoryObject& base) const;
  ldap::StoreStatus ReadObject(const std::string& dn, DirectoryObject& object) const;
  /// The objects right below a container, in the directory's order.
  ldap::StoreStatus ListChildren(const ListRequest& request, const ObjectSink& sink) const;

 private:
  ldap::IDirectoryStore& store_;
};

}  // namespace pelora::session
