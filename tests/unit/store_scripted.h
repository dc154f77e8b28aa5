// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "hosts/ldap/directory_store.h"
#include "hosts/ldap/ldap_status.h"

namespace pelora::ldap {

/// A store of one entry that notes every request and fails on demand.
class ScriptedStore final : public IDirectoryStore {
 public:
  struct ReadCall {
    std::string dn;
    std::vector<std::string> attributes;
  };
  struct ModifyCall {
    std::string dn;
    std::vector<Modification> modifications;
  };

  ScriptedStore() {
    types.Add("objectClass", {});
    types.Add("mail", {.is_single_valued = true});
    types.Add("otherMailbox", {});
    types.Add("description", {});
    types.Add("peloraAccount", {.syntax = Syntax::kInteger, .is_single_valued = true});
    types.Add("flag", {.syntax = Syntax::kBoolean});
  }

  /// Types of the attributes that are known.
  Schema types;
  Entry entry{.dn = "CN=Ada,DC=x", .attributes = {{"objectClass", {"top", "user"}}}};
  Entry root{.dn = "", .attributes = {{"defaultNamingContext", {"DC=x"}}}};
  /// What every request from now on answers instead of being done, unless it is a success.
  StoreStatus failure;

  std::vector<ReadCall> reads;
  std::vector<ModifyCall> modifies;
  std::vector<Entry> adds;
  int root_reads = 0;

  [[nodiscard]] const Schema& schema() const override { return types; }
  StoreStatus ReadRoot(Entry& found) override {
    ++root_reads;
    if (!failure.Ok()) return failure;
    found = root;
    return {};
  }
  StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                   Entry& found) override {
    reads.push_back({dn, {attributes.begin(), attributes.end()}});
    if (!failure.Ok()) return failure;
    if (dn != entry.dn) return {kLdapNoSuchObject, "no such object"};
    found = {.dn = entry.dn, .attributes = {}};
    for (const auto& [name, values] : entry.attributes) {
      const bool is_wanted =
          attributes.empty() || std::ranges::find(attributes, name) != attributes.end();
      if (is_wanted) found.attributes[name] = values;
    }
    return {};
  }
  StoreStatus Search(const SearchRequest& /*request*/, const EntrySink& /*sink*/) override {
    return {kLdapUnwillingToPerform, "not here"};
  }
  StoreStatus Modify(const std::string& dn, std::span<const Modification> modifications) override {
    modifies.push_back({dn, {modifications.begin(), modifications.end()}});
    return failure;
  }
  StoreStatus ModifyStrictly(const std::string& dn,
                             std::span<const Modification> modifications) override {
    return Modify(dn, modifications);
  }
  StoreStatus Add(const Entry& added) override {
    adds.push_back(added);
    return failure;
  }
  StoreStatus Delete(const Entry& /*made*/) override {
    return {kLdapUnwillingToPerform, "not here"};
  }
};

}  // namespace pelora::ldap
