// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <map>
#include <span>
#include <string>
#include <utility>

#include "directory/attribute_catalogue.h"
#include "hosts/ldap/as_made.h"
#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/modify_rules.h"
#include "hosts/ldap/name_key.h"
#include "hosts/ldap/object_name.h"

namespace pelora::testing {

/// A store in memory, by the rules of a directory in a file: for tests that make thousands of them,
/// or that look at what a store was made to hold without waiting for a disk.
///
/// It knows the catalogue's attributes and the usual ones of a directory. Searches know one filter,
/// that every object fits.
class MemoryStore final : public ldap::IDirectoryStore {
 public:
  /// What everything in it is to stand below.
  static constexpr const char* kBase = "DC=memory,DC=example";
  using Entries = std::map<std::string, ldap::AttributeMap>;

  MemoryStore() {
    for (const Attribute& attribute : kAttributeCatalogue) {
      schema_.Add(attribute.name,
                  {.syntax = SyntaxOf(attribute), .is_single_valued = !attribute.is_multi_valued});
    }
    schema_.Add("objectClass", {});
    for (const char* const name : {"cn", "ou", "displayName", "givenName", "sn", "initials",
                                   "sAMAccountName", "userPrincipalName"}) {
      schema_.Add(name, {.is_single_valued = true});
    }
    schema_.Add("userAccountControl", {.syntax = ldap::Syntax::kInteger, .is_single_valued = true});
    schema_.Add("showInAdvancedViewOnly",
                {.syntax = ldap::Syntax::kBoolean, .is_single_valued = true});
    schema_.Add("groupType", {.syntax = ldap::Syntax::kInteger, .is_single_valued = true});
    schema_.Add("distinguishedName",
                {.syntax = ldap::Syntax::kDistinguishedName, .is_single_valued = true});
  }
  MemoryStore(const MemoryStore&) = delete;
  MemoryStore& operator=(const MemoryStore&) = delete;

  /// Puts an object there as it is, or another in its place, past every rule; its name is added.
  void Place(ldap::Entry entry) {
    entry.attributes["distinguishedName"] = {entry.dn};
    entries_.insert_or_assign(ldap::NameKey(entry.dn), std::move(entry.attributes));
  }
  /// Everything that is there, by the names' keys.
  [[nodiscard]] const Entries& entries() const { return entries_; }
  /// Another directory's contents, or those of another time, in place of these.
  void SetEntries(Entries entries) { entries_ = std::move(entries); }
  /// What is stored of an object; nothing for one that is not there.
  [[nodiscard]] ldap::AttributeMap Stored(const std::string& dn) const {
    const auto found = entries_.find(ldap::NameKey(dn));
    return found == entries_.end() ? ldap::AttributeMap() : found->second;
  }

  [[nodiscard]] const ldap::Schema& schema() const override { return schema_; }
  ldap::StoreStatus ReadRoot(ldap::Entry& root) override {
    root = {.dn = "", .attributes = {{"defaultNamingContext", {kBase}}}};
    return {};
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override {
    entry = {};
    const auto found = entries_.find(ldap::NameKey(dn));
    if (!IsName(dn)) return {ldap::kLdapInvalidDnSyntax, "not a distinguished name: " + dn};
    if (found == entries_.end()) return {ldap::kLdapNoSuchObject, "no such object"};
    entry = Part(found->second, attributes);
    return {};
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    if (request.filter != "(objectClass=*)") return {ldap::kLdapUnwillingToPerform, "no filters"};
    const std::string base = ldap::NameKey(request.base);
    const Entries entries = entries_;
    for (const auto& [key, attributes] : entries) {
      const bool fits =
          request.scope == ldap::SearchScope::kBase ? key == base : key.ends_with(base);
      if (fits && !sink(Part(attributes, request.attributes))) break;
    }
    return {};
  }
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override {
    return Change(dn, modifications, ldap::ModifyWay::kPermissive);
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return Change(dn, modifications, ldap::ModifyWay::kStrict);
  }
  ldap::StoreStatus Add(const ldap::Entry& entry) override {
    if (!IsName(entry.dn)) return {ldap::kLdapInvalidDnSyntax, "not a distinguished name"};
    if (entries_.contains(ldap::NameKey(entry.dn))) {
      return {ldap::kLdapAlreadyExists, "the object is there already"};
    }
    if (ldap::StoreStatus status = rules_.CheckNew(entry); !status.Ok()) return status;
    Place(entry);
    return {};
  }
  ldap::StoreStatus Delete(const ldap::Entry& made) override {
    const auto found = entries_.find(ldap::NameKey(made.dn));
    if (found == entries_.end()) return {ldap::kLdapNoSuchObject, "no such object"};
    if (ldap::StoreStatus status = ldap::CheckKept(schema_, made, Part(found->second, {}));
        !status.Ok()) {
      return status;
    }
    entries_.erase(found);
    return {};
  }
  ldap::StoreStatus Rename(const ldap::Entry& seen, const std::string& dn) override {
    if (ldap::StoreStatus status = Meet(seen); !status.Ok()) return status;
    const std::string from = ldap::NameKey(seen.dn);
    const std::string to = ldap::NameKey(dn);
    if (from != to && entries_.contains(to)) {
      return {ldap::kLdapAlreadyExists, "there is an object of this name"};
    }
    if (!entries_.contains(ldap::NameKey(ldap::ContainerOf(dn)))) {
      return {ldap::kLdapNoSuchObject, "there is no such container"};
    }
    Entries after;
    for (const auto& [key, attributes] : entries_) {
      ldap::AttributeMap moved = attributes;
      std::string& name = moved.at("distinguishedName").front();
      const bool is_meant = key == from || ldap::LiesBelow(key, from);
      // What lies below ends with the name as the object itself has it.
      if (is_meant) name = name.substr(0, name.size() - seen.dn.size()) + dn;
      after.emplace(ldap::NameKey(name), std::move(moved));
    }
    entries_ = std::move(after);
    return {};
  }
  ldap::StoreStatus Remove(const ldap::Entry& seen, Extent extent) override {
    if (ldap::StoreStatus status = Meet(seen); !status.Ok()) return status;
    const std::string top = ldap::NameKey(seen.dn);
    const auto is_below = [&](const auto& entry) { return ldap::LiesBelow(entry.first, top); };
    if (extent == Extent::kAlone && std::ranges::any_of(entries_, is_below)) {
      return {ldap::kLdapNotAllowedOnNonLeaf, "other objects lie below it"};
    }
    std::erase_if(entries_,
                  [&](const auto& entry) { return entry.first == top || is_below(entry); });
    return {};
  }

 private:
  /// Whether the object that was seen is there.
  [[nodiscard]] ldap::StoreStatus Meet(const ldap::Entry& seen) const {
    const auto found = entries_.find(ldap::NameKey(seen.dn));
    if (found == entries_.end()) return {ldap::kLdapNoSuchObject, "no such object"};
    return ldap::CheckSame(schema_, seen, Part(found->second, {}));
  }

  static ldap::Syntax SyntaxOf(const Attribute& attribute) {
    switch (attribute.encoding) {
      case Encoding::kFlag:
      case Encoding::kInteger:
        return ldap::Syntax::kInteger;
      default:
        return ldap::Syntax::kString;
    }
  }
  static bool IsName(const std::string& dn) { return dn.find('=') != std::string::npos; }

  static ldap::Entry Part(const ldap::AttributeMap& whole,
                          std::span<const std::string> attributes) {
    ldap::Entry part{.dn = whole.at("distinguishedName").front(), .attributes = {}};
    if (attributes.empty()) part.attributes = whole;
    for (const std::string& name : attributes) {
      const auto found = whole.find(name);
      if (found != whole.end()) part.attributes.insert(*found);
    }
    return part;
  }

  ldap::StoreStatus Change(const std::string& dn, std::span<const ldap::Modification> modifications,
                           ldap::ModifyWay way) {
    const auto found = entries_.find(ldap::NameKey(dn));
    if (found == entries_.end()) return {ldap::kLdapNoSuchObject, "no such object"};
    ldap::AttributeMap changed;
    ldap::StoreStatus status = rules_.Apply(Part(found->second, {}), modifications, changed, way);
    if (!status.Ok()) return status;
    // On the side, so that nothing is half done when memory runs out.
    ldap::AttributeMap attributes = found->second;
    for (auto& [name, values] : changed) {
      attributes.erase(name);
      if (!values.empty()) attributes.emplace(name, std::move(values));
    }
    found->second.swap(attributes);
    return {};
  }

  ldap::Schema schema_;
  ldap::ModifyRules rules_{schema_, &IsName};
  Entries entries_;
};

}  // namespace pelora::testing
