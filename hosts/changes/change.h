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
  /// Of a list: they leave out nothing. Whoever takes the change back can tell then whether
  /// somebody has touched the list since, wherever in it (`Lists::kUntouched`).
  bool is_whole = false;
};

/// One change of one object, sent as one request that takes effect whole or not at all. A value:
/// it knows nothing of where it came from or goes to.
struct Change {
  enum class Kind : std::uint8_t {
    kModify,
    /// A new object; `wanted` are its attributes, `objectClass` among them.
    kAdd,
    /// An object goes, but only when it is still as it was made: `seen` are its attributes. With
    /// `objectClass` among them it can be made again.
    kDelete,
    /// An object gets the name `new_dn`, in its container or in another one.
    kRename,
    /// An object goes, whatever it has become since it was seen.
    kRemove,
    /// A deleted object comes back under the name `dn`; `objectGUID` says which one.
    kRestore,
  };
  Kind kind = Kind::kModify;
  /// The object's distinguished name.
  std::string dn;
  /// Each attribute at most once. Of objects that get another name, go or come back, `seen` says
  /// which object is meant: what nobody changes as long as it lives.
  std::vector<ValueChange> attributes;
  /// `kRename`: what the object is called from then on.
  std::string new_dn{};
  /// `kRemove`: all that lies below it goes too.
  bool with_all_below = false;
  /// `kRemove`: the directory keeps what is deleted, and gives it back whole.
  bool is_kept = false;
  /// `kRemove` of an object that is kept: what goes with it, as `dn` and `objectGUID`, the objects
  /// below others first.
  std::vector<ldap::Entry> below{};

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
/// deletion of what is still as it was made, and such a deletion an addition. Attributes that the
/// directory takes and never gives, passwords, are left out, and so is what it alone sets: that an
/// account is locked, and when a password was set. A deletion of what the directory does not keep
/// cannot be taken back, nor one that does not say of what classes the object was: the undo is a
/// modification of nothing.
[[nodiscard]] Change UndoOf(const Change& change);

/// The same, with what takes back what went with an object. Done in turn from the last to the
/// first, what lies above others comes back before them.
[[nodiscard]] std::vector<Change> UndosOf(const Change& change);

/// Whether what was written of an attribute cannot be read, and so not be taken back either.
[[nodiscard]] bool IsForGood(const ValueChange& value);

/// Whether a change can be taken back at all.
[[nodiscard]] bool CanBeTakenBack(const Change& change);

/// The object that a change is about, as it was seen, and as it is wanted.
[[nodiscard]] ldap::Entry SeenIn(const Change& change);
[[nodiscard]] ldap::Entry WantedIn(const Change& change);

}  // namespace pelora::changes
