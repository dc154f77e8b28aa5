// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/changes/named_values.h"
#include "hosts/changes/result.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/store_object.h"

namespace pelora::changes {

/// What pages have been told of objects and what they staged, by the objects' names: the memory of
/// a `RecordingDirectory`, which says what the rules are. It asks no directory.
class RecordingMemory {
 public:
  using Keeps = std::function<bool(std::string_view attribute)>;

  /// `schema` outlives it. `bound` are the attributes that bindings read; none: all.
  RecordingMemory(const ldap::Schema& schema, std::vector<std::string> bound, Keeps keeps);

  /// Whether bindings read an attribute; all of these (none: all that an object has).
  [[nodiscard]] bool IsBound(std::string_view attribute) const {
    return bindings_.Covers(attribute);
  }
  [[nodiscard]] bool AreBound(std::span<const std::string> attributes) const;
  /// Whether whoever reads these attributes (none: all) reads everything that bindings do.
  [[nodiscard]] bool IncludesBound(std::span<const std::string> attributes) const;
  /// Whether they are, in their order, what bindings read, `objectClass` behind it: both, then.
  [[nodiscard]] bool AreThoseOfBindings(std::span<const std::string> attributes) const;

  /// Everything that bindings read was read of an object, and nothing is left out when it was read
  /// whole. Many memories may share what was read.
  void NoteBound(const std::string& dn, std::shared_ptr<const ldap::Entry> entry, bool is_whole);
  /// These attributes were read of an object, by themselves.
  void NoteRead(const std::string& dn, std::span<const std::string> attributes,
                const ldap::AttributeMap& values);
  /// A page was told these values.
  void NoteTold(const std::string& dn, std::string_view attribute, const AttributeValues& values);

  /// What counts as seen of an attribute: what a page was told last, or what was read. None: not
  /// set, or not known.
  [[nodiscard]] AttributeValues Seen(const std::string& dn, std::string_view attribute) const;

  /// Those of the staged attributes of which nothing is known yet: to be read before `Record`.
  [[nodiscard]] std::vector<std::string> Unknown(const std::string& dn,
                                                 std::span<const ldap::Modification> staged) const;
  void Record(const std::string& dn, std::span<const ldap::Modification> staged);
  void Record(const Change& change);
  void RecordAdd(const ldap::Entry& entry);

  /// The object whose addition is recorded and not settled; null when there is none.
  [[nodiscard]] const ldap::Entry* Added(const std::string& dn) const;

  /// `breathe` is called with each of them; may be none.
  [[nodiscard]] std::vector<Change> Unwritten(const std::function<void()>& breathe = {}) const;
  [[nodiscard]] bool HasUnwritten() const { return !unwritten_.empty(); }
  void Settle(const Change& change, const Result& result);
  void AcceptAsSeen(const Result& result);
  void Drop(const std::string& dn, std::string_view attribute);
  void Forget(const std::string& dn);
  /// Forgets everything; gives what was known, which belongs to nothing any more.
  [[nodiscard]] std::shared_ptr<void> ForgetAll();
  void LeaveOut(const std::string& dn);
  void TakeInAgain(std::span<const std::string_view> attributes);

 private:
  struct Object {
    std::string dn;
    /// What was read last for a binding (null: nothing), and by itself since; what a page was told
    /// last. No values: not set.
    std::shared_ptr<const ldap::Entry> bound;
    bool is_read_whole = false;
    ldap::AttributeMap read;
    NamedValues told;
    /// What is not written yet, and its place among the objects of which something is not.
    std::vector<ValueChange> unwritten;
    std::optional<ldap::Entry> added;
    std::optional<std::size_t> place;
  };

  [[nodiscard]] const Object* Find(const std::string& dn) const;
  [[nodiscard]] Object& At(const std::string& dn);
  [[nodiscard]] static AttributeValues SeenOf(const Object& object, std::string_view attribute);
  [[nodiscard]] bool IsKept(std::string_view attribute) const;
  [[nodiscard]] ValueChange ChangeOf(const Object& object, const ldap::Modification& staged) const;
  /// Whether it was left out, and is still wanted as it was then.
  [[nodiscard]] bool IsLeftOut(const Object& object, const ValueChange& change);
  static void Stage(Object& object, ValueChange change, bool changes_something);
  void Enlist(Object& object);

  const ldap::Schema& schema_;
  ldap::BindingOptions bindings_;
  Keeps keeps_;
  std::map<std::string, Object> objects_;
  /// What was left out, by the objects' keys: the values that were wanted.
  std::map<std::string, ldap::AttributeMap> left_out_;
  /// Places, in the order in which the objects were recorded, and the objects' keys.
  std::map<std::size_t, std::string> unwritten_;
  std::size_t next_place_ = 0;
  /// The object that was spoken of last, as a page speaks of one many times; may be null.
  Object* last_ = nullptr;
};

}  // namespace pelora::changes
