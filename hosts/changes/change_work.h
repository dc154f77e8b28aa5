// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "hosts/changes/change_runner.h"

namespace pelora::changes {

/// Where a run's changes come from.
class IWork {
 public:
  virtual ~IWork() = default;
  [[nodiscard]] virtual std::size_t count() const = 0;
  [[nodiscard]] virtual std::string NameOf(std::size_t at) const = 0;
  /// Reads what is needed for the next objects. A failure is one of the directory as a whole; each
  /// object is prepared all the same.
  [[nodiscard]] virtual ldap::StoreStatus Read(std::size_t begin, std::size_t end) = 0;
  /// These will be read next.
  virtual void Announce(std::size_t /*begin*/, std::size_t /*end*/) {}
  /// Whether that does any good.
  [[nodiscard]] virtual bool ReadsAhead() const { return false; }
  [[nodiscard]] virtual Prepared PrepareOne(std::size_t at) = 0;
  /// Whether what is prepared comes from what was just read.
  [[nodiscard]] virtual bool IsFresh() const = 0;
  /// The object of a change that has to be looked at, as it was just read; null when it was not.
  [[nodiscard]] virtual const ldap::Entry* LookedAt(std::size_t /*at*/) const { return nullptr; }
};

/// Changes that are known already. Objects that have to be looked at before something is sent
/// (`ChangeWriter::NeedsLook`) are read together, as far as no change before them in the run can
/// have done something to them.
class KnownWork final : public IWork {
 public:
  /// The store and the changes outlive it.
  KnownWork(ldap::IDirectoryStore& store, std::span<const Change> changes, Lists lists);

  [[nodiscard]] std::size_t count() const override { return changes_.size(); }
  [[nodiscard]] std::string NameOf(std::size_t at) const override { return changes_[at].dn; }
  /// What cannot be read is looked at when its turn comes.
  [[nodiscard]] ldap::StoreStatus Read(std::size_t begin, std::size_t end) override;
  [[nodiscard]] Prepared PrepareOne(std::size_t at) override { return {.change = changes_[at]}; }
  [[nodiscard]] bool IsFresh() const override { return false; }
  [[nodiscard]] const ldap::Entry* LookedAt(std::size_t at) const override;

 private:
  ldap::IDirectoryStore& store_;
  std::span<const Change> changes_;
  /// Places of changes whose objects can be read together with others, in their order.
  std::vector<std::size_t> readable_;
  /// What was read last, by the changes' places.
  std::map<std::size_t, ldap::Entry> read_;
};

}  // namespace pelora::changes
