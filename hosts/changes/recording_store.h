// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/recording_memory.h"
#include "hosts/ldap/forwarding_store.h"
#include "hosts/ldap/store_object.h"

namespace pelora::changes {

/// A store as a recording sees it: what is read goes through and is remembered, what is written is
/// recorded and goes nowhere.
class RecordingStore final : public ldap::ForwardingStore, public ldap::IReadingWitness {
 public:
  /// Both outlive it. `breathe` is called with every value told, every modification, every object
  /// that is at hand when it is read, and every bound object that goes; may be none.
  RecordingStore(ldap::IDirectoryStore& target, RecordingMemory& memory,
                 std::function<void()> breathe = {});

  /// Answers readings of this object from now on, as far as they ask for what bindings read.
  void Give(std::shared_ptr<const ldap::Entry> entry);
  void TakeBack(const std::string& dn);
  /// Takes back everything, and hands it over.
  [[nodiscard]] std::shared_ptr<void> TakeAllBack();

  void OnTold(const std::string& dn, std::string_view attribute,
              const AttributeValues& values) override {
    memory_.NoteTold(dn, attribute, values);
    if (breathe_) breathe_();
  }
  void OnReleased() noexcept override;

  ldap::StoreStatus Read(const std::string& dn, std::span<const std::string> attributes,
                         ldap::Entry& entry) override;
  ldap::StoreStatus ReadMany(std::span<const std::string> dns,
                             std::span<const std::string> attributes,
                             const ldap::ReadSink& sink) override;
  ldap::StoreStatus Modify(const std::string& dn,
                           std::span<const ldap::Modification> modifications) override;
  ldap::StoreStatus ModifyStrictly(const std::string& dn,
                                   std::span<const ldap::Modification> modifications) override;
  void ModifyManyStrictly(const ldap::ModifySource& next, const ldap::ModifySink& sink) override {
    IDirectoryStore::ModifyManyStrictly(next, sink);
  }
  ldap::StoreStatus Add(const ldap::Entry& entry) override;
  ldap::StoreStatus Delete(const ldap::Entry& made) override;
  ldap::StoreStatus Rename(const ldap::Entry& seen, const std::string& dn) override;
  ldap::StoreStatus Remove(const ldap::Entry& seen, Extent extent) override;
  ldap::StoreStatus Restore(const ldap::Entry& removed) override;

 private:
  /// What is asked for, and how that stands to what bindings read.
  struct Asked {
    std::span<const std::string> attributes;
    bool are_bound;
    bool include_bound;
  };
  [[nodiscard]] Asked AskedOf(std::span<const std::string> attributes) const;
  /// What is at hand of an object; null when the store has to be asked.
  [[nodiscard]] std::shared_ptr<const ldap::Entry> AtHand(const std::string& dn,
                                                          const Asked& asked) const;
  /// Has it remembered what was read of an object.
  void Note(const std::string& dn, const Asked& asked, std::shared_ptr<const ldap::Entry> entry);

  RecordingMemory& memory_;
  std::map<std::string, std::shared_ptr<const ldap::Entry>> given_;
  std::function<void()> breathe_;
};

}  // namespace pelora::changes
