// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/schema.h"

namespace pelora::changes {

using ldap::AttributeValues;

/// What is to become of one attribute: the values that were seen and those that are wanted, as the
/// directory holds them (byte strings). None: not set.
struct ValueChange {
  std::string attribute;
  /// Whether the attribute may have several values. They are a set then: what is sent is what was
  /// taken out and what was put in, and values that somebody else puts in or takes out meanwhile
  /// are left as they are. `seen` and `wanted` may leave out values that both would hold.
  bool is_list = false;
  AttributeValues seen{};
  AttributeValues wanted{};
};

/// One change of one object, sent as one request that takes effect whole or not at all. A value:
/// it knows nothing of where it came from or goes to.
struct Change {
  enum class Kind : std::uint8_t {
    kModify,
    /// A new object; `wanted` are its attributes, `objectClass` among them.
    kAdd,
    /// An object goes, but only when it is still as it was made: `seen` are its attributes.
    kDelete,
  };
  Kind kind = Kind::kModify;
  /// The object's distinguished name.
  std::string dn;
  /// Each attribute at most once.
  std::vector<ValueChange> attributes;

  /// The change of an attribute, its name in any case; null when there is none.
  [[nodiscard]] const ValueChange* Find(std::string_view attribute) const;
  [[nodiscard]] ValueChange* Find(std::string_view attribute);
};

/// The values of `values` that `others` has not. Numbers are compared as numbers and names of
/// objects without case; of a text the case of a letter is a difference (`ldap::EditingKey`).
[[nodiscard]] AttributeValues Without(ldap::Syntax syntax, const AttributeValues& values,
                                      const AttributeValues& others);

/// Whether two sets of values, in any order, are the same to the directory.
[[nodiscard]] bool AreSameValues(ldap::Syntax syntax, const AttributeValues& left,
                                 const AttributeValues& right);

/// The syntax of an attribute; that of a text when the schema does not know it.
[[nodiscard]] ldap::Syntax SyntaxOf(const ldap::Schema& schema, std::string_view attribute);

/// Takes away every attribute that is as it is wanted already. A modification of which nothing is
/// left changes nothing and is not to be sent.
void DropWhatChangesNothing(const ldap::Schema& schema, Change& change);

/// The change that makes an object of its entry.
[[nodiscard]] Change AdditionOf(const ldap::Entry& entry);

/// The change that takes `change` back: seen and wanted are exchanged, an addition becomes a
/// deletion of what is still as it was made. Attributes that the directory takes and never gives,
/// passwords, are left out. A deletion cannot be taken back: its undo is a modification of nothing.
[[nodiscard]] Change UndoOf(const Change& change);

}  // namespace pelora::changes
