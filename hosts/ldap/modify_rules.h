// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// Whether a text is a well-formed distinguished name.
using NameCheck = std::function<bool(const std::string& name)>;

/// How additions and deletions of values are taken.
enum class ModifyWay : std::uint8_t {
  /// A value that is there is not added again, one that is not is deleted without complaint.
  kPermissive,
  /// Both are refused, and so is an addition to an attribute of one value that has one.
  kStrict,
};

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
  /// one that the syntax does not allow, 21; a malformed name 34. Strictly, a deleted value that is
  /// not there is 16, an added one that is, or that finds an attribute of one value taken, 20. The
  /// case of a text's letters counts in a value that is deleted strictly: who asks for "a" has not
  /// seen that it is "A" now.
  [[nodiscard]] StoreStatus Apply(const Entry& before, std::span<const Modification> modifications,
                                  AttributeMap& changed,
                                  ModifyWay way = ModifyWay::kPermissive) const;

  /// Checks what can be told without knowing the object: the codes are those of `Apply`, and
  /// whether an attribute may be changed at all is left open.
  [[nodiscard]] StoreStatus CheckValues(std::span<const Modification> modifications) const;

  /// Checks every value of a new entry by the same rules.
  [[nodiscard]] StoreStatus CheckNew(const Entry& entry) const;

 private:
  [[nodiscard]] StoreStatus CheckGiven(Modification::Operation operation,
                                       const AttributeValues& values,
                                       const AttributeType& type) const;
  /// Changes `values` as the modification says, or refuses it.
  [[nodiscard]] StoreStatus ApplyOne(const Modification& change, ModifyWay way,
                                     AttributeValues& values) const;
  [[nodiscard]] StoreStatus CheckValue(const AttributeType& type, const std::string& value) const;

  const Schema& schema_;
  NameCheck is_name_;
};

}  // namespace pelora::ldap
