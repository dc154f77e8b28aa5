// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldb_connection.h"
#include "hosts/ldap/modify_rules.h"

namespace pelora::ldap {

/// What a directory server does when it writes, for a database that has no server. Everything
/// happens within a transaction that the caller began and ends; a change that is refused by a rule
/// has written nothing.
class LdbChanges {
 public:
  /// All of them outlive the object. `root` is the directory's root entry.
  LdbChanges(const LdbConnection& connection, const Schema& schema, const Entry& root);

  /// `has_changes` says whether there is something to commit. `is_damaged`: the library failed in
  /// the middle of it, and the transaction is not to be committed.
  struct Effect {
    bool has_changes = false;
    bool is_damaged = false;
  };
  [[nodiscard]] StoreStatus Modify(const std::string& dn,
                                   std::span<const Modification> modifications, ModifyWay way,
                                   Effect& effect) const;
  /// The same of an object that is known to be as it is in `known`, as far as the modifications are
  /// about it.
  [[nodiscard]] StoreStatus ModifyKnown(const ldb_message& known,
                                        std::span<const Modification> modifications, ModifyWay way,
                                        Effect& effect) const;
  [[nodiscard]] StoreStatus Add(Entry entry, Effect& effect) const;
  [[nodiscard]] StoreStatus Delete(const Entry& made, Effect& effect) const;
  [[nodiscard]] StoreStatus Rename(const Entry& seen, const std::string& dn, Effect& effect) const;
  [[nodiscard]] StoreStatus Remove(const Entry& seen, IDirectoryStore::Extent extent,
                                   Effect& effect) const;
  /// Writes out in a new entry what `Add` puts into it; one that cannot be added stays as it is.
  void CompleteNew(Entry& entry) const;

 private:
  /// Names of accounts are unique in the whole directory.
  [[nodiscard]] StoreStatus CheckAccountName(const Entry& entry) const;
  [[nodiscard]] StoreStatus CheckLeaf(const std::string& dn) const;
  /// Whether an object may get that name.
  [[nodiscard]] StoreStatus CheckNewName(const std::string& dn, const std::string& to) const;
  /// The names of an object and of all below it, those above first.
  [[nodiscard]] StoreStatus ReadTree(const std::string& dn, std::vector<std::string>& names) const;
  /// Changes the attributes that say what the object is called.
  [[nodiscard]] StoreStatus WriteNames(const std::string& dn, Effect& effect) const;
  /// Changes the names of an object and of those below it wherever other objects hold them.
  [[nodiscard]] StoreStatus FollowName(const std::string& from, const std::string& to,
                                       Effect& effect) const;
  [[nodiscard]] static StoreStatus Written(StoreStatus status, Effect& effect);

  const LdbConnection& connection_;
  const Schema& schema_;
  const Entry& root_;
  ModifyRules rules_;
};

}  // namespace pelora::ldap
