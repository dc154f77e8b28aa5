// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <mutex>
#include <optional>

#include "hosts/ldap/network/known_domains.h"

namespace pelora::ldap {

/// The domains around a directory's own, read once for everything that one session opens. May be
/// used on several threads; two that ask at the same time may both read.
class DomainsAround {
 public:
  /// What has been read before, or else what `store`, one of the directory, says now. A directory
  /// that refuses to say knows none, and is not asked again; one that cannot be reached (a negative
  /// code), or has too much to do, has not said anything. `domains` is null then, and never
  /// otherwise.
  StoreStatus Know(IDirectoryStore& store, std::shared_ptr<const KnownDomains>& domains);
  /// Whoever asks next reads again: the server that has told is not there any more, and another one
  /// may know others.
  void Forget();

 private:
  struct Told {
    StoreStatus status;
    std::shared_ptr<const KnownDomains> domains;
  };
  std::mutex mutex_;
  std::optional<Told> told_;
};

}  // namespace pelora::ldap
