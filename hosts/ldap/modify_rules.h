// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <span>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Whether a text is a well-formed distinguished name.
using NameCheck = std::function<bool(const std::string& name)>;

/// What a directory server checks before it writes, for a store that has no server.
class ModifyRules {
 public:
  /// `schema` outlives the rules.
  ModifyRules(const Schema& schema, NameCheck is_name);

  /// Works out what `modifications`, in order, make of `before`: `changed` gets the complete new
  /// values of every attribute that ends up different, none for one that is removed. Values are
  /// compared as their syntax says.
  ///
  /// The first rule that is broken is returned and `changed` is left empty: an unknown attribute
  /// 16; one that only the directory itself sets 19, 65 or 67; several values for a single-valued
  /// one, or a value out of its range, 19; a value twice in one replacement 20; an empty value, or
  /// one that the syntax does not allow, 21; a malformed name 34.
  [[nodiscard]] StoreStatus Apply(const Entry& before, std::span<const Modification> modifications,
                                  AttributeMap& changed) const;

  /// Checks what can be told without knowing the object: the codes are those of `Apply`, and
  /// whether an attribute may be changed at all is left open.
  [[nodiscard]] StoreStatus CheckValues(std::span<const Modification> modifications) const;

  /// Checks every value of a new entry by the same rules.
  [[nodiscard]] StoreStatus CheckNew(const Entry& entry) const;

 private:
  [[nodiscard]] StoreStatus CheckChange(const Modification& change,
                                        const AttributeType& type) const;
  /// Changes `values` as the modification says, or refuses it.
  [[nodiscard]] StoreStatus ApplyOne(const Modification& change, AttributeValues& values) const;
  [[nodiscard]] StoreStatus CheckValue(const AttributeType& type, const std::string& value) const;

  const Schema& schema_;
  NameCheck is_name_;
};

}  // namespace pelora::ldap
