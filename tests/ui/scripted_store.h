// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

#include "hosts/ldap/store_opener.h"

namespace pelora::test {

/// A store that answers searches as a test says and knows nothing else.
class ScriptedStore final : public ldap::IDirectoryStore {
 public:
  using SearchScript =
      std::function<ldap::StoreStatus(const ldap::SearchRequest&, const ldap::EntrySink&)>;

  /// What a script answers so that the store waits as for a server that does not: until it is
  /// stopped, or for half a minute.
  static constexpr int kHangs = -1000;

  /// `has_base`: the base "DC=x" can be read.
  explicit ScriptedStore(SearchScript search, bool has_base = false)
      : search_(std::move(search)), has_base_(has_base) {}

  const ldap::Schema& schema() const override { return schema_; }
  ldap::StoreStatus ReadRoot(ldap::Entry& root) override {
    root = {.dn = "", .attributes = {{"defaultNamingContext", {"DC=x"}}}};
    return {};
  }
  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> /*attributes*/,
                         ldap::Entry& entry) override {
    if (!has_base_ || dn != "DC=x") return failure_;
    entry = {.dn = dn, .attributes = {{"objectClass", base_classes_}}};
    return {};
  }
  ldap::StoreStatus Search(const ldap::SearchRequest& request,
                           const ldap::EntrySink& sink) override {
    ldap::StoreStatus status = search_(request, sink);
    return status.code == kHangs ? Hang() : status;
  }
  /// What the reading of an entry that is not there answers from now on.
  void FailWith(ldap::StoreStatus failure) { failure_ = std::move(failure); }
  /// The base is of these classes from now on, and not the base of a domain.
  void SetBaseClasses(ldap::AttributeValues classes) { base_classes_ = std::move(classes); }
  void StopOn(const std::stop_token& stop) override { stop_ = stop; }
  ldap::StoreStatus Modify(const std::string& /*dn*/,
                           std::span<const ldap::Modification> /*modifications*/) override {
    return {53, "unwilling to perform"};
  }
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override {
    return Modify(dn, modifications);
  }
  ldap::StoreStatus Delete(const ldap::Entry& /*made*/) override {
    return {53, "unwilling to perform"};
  }
  ldap::StoreStatus Add(const ldap::Entry& /*entry*/) override {
    return {53, "unwilling to perform"};
  }

 private:
  [[nodiscard]] ldap::StoreStatus Hang() const {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!stop_.stop_requested() && std::chrono::steady_clock::now() < end) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return {stop_.stop_requested() ? -8 : -5, "no answer"};
  }

  SearchScript search_;
  bool has_base_;
  ldap::AttributeValues base_classes_ = {"top", "domain", "domainDNS"};
  ldap::StoreStatus failure_{32, "no such object"};
  ldap::Schema schema_;
  std::stop_token stop_;
};

/// Opens stores that share one script.
inline ldap::StoreOpener OpenScripted(ScriptedStore::SearchScript search) {
  return [search = std::move(search)](std::unique_ptr<ldap::IDirectoryStore>& store,
                                      const std::stop_token& /*stop*/) {
    store = std::make_unique<ScriptedStore>(search);
    return ldap::StoreStatus{};
  };
}

/// A user of that name right below the base.
inline ldap::Entry UserEntry(const std::string& name) {
  return {.dn = "CN=" + name + ",DC=x",
          .attributes = {{"objectClass", {"top", "person", "user"}}, {"name", {name}}}};
}

/// A container of that name below the base or another one.
inline ldap::Entry ContainerEntry(const std::string& name, const std::string& parent = "DC=x") {
  return {.dn = "OU=" + name + "," + parent,
          .attributes = {{"objectClass", {"top", "organizationalUnit"}}, {"name", {name}}}};
}

}  // namespace pelora::test
