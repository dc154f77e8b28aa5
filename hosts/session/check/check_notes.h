// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "hosts/changes/change.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/session/check/checked_object.h"
#include "hosts/session/check/finding.h"

namespace pelora::session {

struct CheckRule;

/// What has to be true of an object or server that another object names.
enum class Named : std::uint8_t {
  kIsThere,
  /// And is a user, no computer.
  kIsUser,
  /// It is the `cn` of a computer with a Pelora server.
  kIsServer,
};

/// What the rules note while the objects pass by, one after the other. What is known of an object
/// by itself is a finding at once; names of other objects and addresses are kept until all objects
/// have passed. Of the objects themselves only the name is kept.
class CheckNotes {
 public:
  // What a rule notes of the object that it looks at.

  /// Something is wrong.
  void Found(std::string message, std::optional<changes::ValueChange> mend = {});
  /// The object names another in an attribute, whose name outlives the notes. Whether that is right
  /// is found out later. `can_be_taken_out`: when it is wrong the name goes, as a mend.
  void Names(std::string_view attribute, const std::string& name, Named what,
             bool can_be_taken_out = false);
  /// The object has an address, which is wrong when another object has it too.
  void HasAddress(const std::string& address);

  // What the check itself does, in this order.

  /// Notes the name of a server.
  void IsServer(const std::string& cn);
  /// Notes that an object is there, so that it need not be looked up.
  void IsThere(const ldap::Entry& entry);
  /// From now on `rule` looks at `object`.
  void Begin(const CheckRule& rule, const CheckedObject& object);
  /// Looks up the named objects that have not passed by, many at a time. Fails when the directory
  /// cannot answer; what it cannot speak for (another domain's) counts as there.
  ldap::StoreStatus LookUpNames(ldap::IDirectoryStore& store);
  /// Hands over what is wrong, ordered by the table of rules and then by the object's name.
  void Report(const FindingSink& sink);

 private:
  using ObjectIndex = std::uint32_t;

  struct Note {
    const CheckRule* rule = nullptr;
    ObjectIndex object = 0;
    std::string message{};
    std::optional<changes::ValueChange> mend{};
    /// The addresses, without case, that it shares with others; none but with the rule about them.
    std::vector<std::string> addresses{};
  };
  struct Reference {
    const CheckRule* rule = nullptr;
    ObjectIndex object = 0;
    std::string_view attribute{};
    std::string name{};
    Named what = Named::kIsThere;
    bool can_be_taken_out = false;
  };
  enum class Target : std::uint8_t { kNotThere, kUser, kOther, kUnknown };

  /// The object looked at, which is kept from now on.
  [[nodiscard]] ObjectIndex Object();
  [[nodiscard]] Target TargetOf(const std::string& name) const;
  [[nodiscard]] std::vector<std::string> UnknownNames() const;
  void NoteWrongName(const Reference& reference, std::string_view what_is_wrong);
  void SettleNames();
  void SettleAddresses();
  /// Of each kept object its place in the order of the names.
  [[nodiscard]] std::vector<ObjectIndex> Ranks() const;
  void NameOthers(const Note& note, const std::vector<ObjectIndex>& ranks, Finding& finding) const;

  const CheckRule* rule_ = nullptr;
  const CheckedObject* looked_at_ = nullptr;
  std::vector<std::string> objects_;
  std::vector<Note> notes_;
  std::vector<Reference> references_;
  /// What is known of objects, by name.
  std::unordered_map<std::string, Target> targets_;
  std::unordered_set<std::string> servers_;
  const CheckRule* address_rule_ = nullptr;
  /// By the address without case.
  std::unordered_map<std::string, std::vector<ObjectIndex>> addresses_;
};

/// The change by which values of a list go.
[[nodiscard]] changes::ValueChange TakingOut(std::string_view attribute,
                                             ldap::AttributeValues values);

}  // namespace pelora::session
