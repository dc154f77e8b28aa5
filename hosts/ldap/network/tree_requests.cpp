// SPDX-License-Identifier: Apache-2.0
// Objects that are deleted, renamed, moved and brought back.
#include <array>
#include <vector>

#include "hosts/ldap/guid_name.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/network/broken_pipe_guard.h"
#include "hosts/ldap/network/ldap_connection.h"
#include "hosts/ldap/network/modify_request.h"
#include "hosts/ldap/network/request_name.h"
#include "hosts/ldap/object_name.h"
#include "hosts/ldap/tree_controls.h"

namespace pelora::ldap {
namespace {

/// A control without a value, which the server has to know.
class PlainControl {
 public:
  explicit PlainControl(const char* identifier)
      : control_{.ldctl_oid = const_cast<char*>(identifier),
                 .ldctl_value = {.bv_len = 0, .bv_val = nullptr},
                 .ldctl_iscritical = 1} {}
  PlainControl(const PlainControl&) = delete;
  PlainControl& operator=(const PlainControl&) = delete;

  [[nodiscard]] LDAPControl** list() { return list_.data(); }

 private:
  LDAPControl control_;
  std::array<LDAPControl*, 2> list_ = {&control_, nullptr};
};

}  // namespace

StoreStatus LdapConnection::SendDelete(const std::string& dn, RequestId& id,
                                       IDirectoryStore::Extent extent) {
  if (is_broken_) return Failure(LDAP_SERVER_DOWN, {});
  if (StoreStatus named = CheckRequestName(dn); !named.Ok()) return named;
  const BrokenPipeGuard guard;
  PlainControl tree(kTreeDeleteControl);
  const bool is_tree = extent == IDirectoryStore::Extent::kWithAllBelow;
  const int code =
      ldap_delete_ext(handle(), dn.c_str(), is_tree ? tree.list() : nullptr, nullptr, &id);
  return Failure(code, "the deletion cannot be sent");
}

StoreStatus LdapConnection::SendRename(const std::string& dn, const std::string& to,
                                       RequestId& id) {
  if (is_broken_) return Failure(LDAP_SERVER_DOWN, {});
  if (StoreStatus named = CheckRequestName(dn); !named.Ok()) return named;
  if (StoreStatus named = CheckRequestName(to); !named.Ok()) return named;
  const BrokenPipeGuard guard;
  const std::string first(FirstPart(to));
  const std::string container(ContainerOf(to));
  // Whoever may only rename has no business with the container.
  const bool is_moved = NameKey(container) != NameKey(ContainerOf(dn));
  const int code = ldap_rename(handle(), dn.c_str(), first.c_str(),
                               is_moved ? container.c_str() : nullptr, 1, nullptr, nullptr, &id);
  return Failure(code, "the new name cannot be sent");
}

StoreStatus LdapConnection::SendRestore(const std::string& guid, const std::string& dn,
                                        RequestId& id) {
  if (is_broken_) return Failure(LDAP_SERVER_DOWN, {});
  if (StoreStatus named = CheckRequestName(dn); !named.Ok()) return named;
  const BrokenPipeGuard guard;
  PlainControl deleted(kShowDeletedControl);
  const std::vector<Modification> request = {
      {Modification::Operation::kDelete, "isDeleted", {}},
      {Modification::Operation::kReplace, "distinguishedName", {dn}}};
  LdapModifications changes(request);
  const int code = ldap_modify_ext(handle(), DeletedName(dn, guid).c_str(), changes.get(),
                                   deleted.list(), nullptr, &id);
  return Failure(code, "the restoring cannot be sent");
}

}  // namespace pelora::ldap
