// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/session/life/references.h"

namespace pelora::session {

/// So many objects of a type.
struct TypeCount {
  std::string type;
  std::size_t count = 0;
};

/// What is about to become of objects, and what comes with it; read from the directory, and nothing
/// written yet.
struct PlacePlan {
  /// One for each object, in the order in which they were given. Objects that go with another one
  /// of them have none of their own.
  std::vector<changes::Change> changes{};
  /// What the objects of the changes are called.
  std::vector<std::string> names{};
  /// What goes along since it lies below one of them, by its types.
  std::vector<TypeCount> below{};
  /// What refers to the objects, and will not any more. Of a deletion, what goes itself is left
  /// out.
  std::vector<Reference> references{};
  /// Whether there are more references than are kept here.
  bool has_more_references = false;
  /// Of a deletion: whether it can be taken back.
  bool is_kept = false;

  /// How many objects lie below.
  [[nodiscard]] std::size_t BelowCount() const;
};

inline constexpr std::size_t kMostReferences = 1000;

/// Each reads what there is to know; a failure is that of the directory, and says nothing of the
/// plan. `attributes` are those by which objects refer to others (`ReferringAttributes`).

[[nodiscard]] ldap::StoreStatus PlanRenaming(ldap::IDirectoryStore& store, const std::string& dn,
                                             const std::string& name,
                                             const std::vector<ReferringAttribute>& attributes,
                                             PlacePlan& plan);
/// Objects that lie in the container already are left out.
[[nodiscard]] ldap::StoreStatus PlanMoving(ldap::IDirectoryStore& store,
                                           const std::vector<std::string>& dns,
                                           const std::string& container,
                                           const std::vector<ReferringAttribute>& attributes,
                                           PlacePlan& plan);
[[nodiscard]] ldap::StoreStatus PlanRemoval(ldap::IDirectoryStore& store,
                                            const std::vector<std::string>& dns,
                                            const std::vector<ReferringAttribute>& attributes,
                                            PlacePlan& plan);

}  // namespace pelora::session
