// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <span>
#include <vector>

#include "hosts/ldap/directory_store.h"

namespace pelora::ldap {

/// What became of a group of requests.
struct WrittenGroup {
  /// One for each, in their order.
  std::vector<StoreStatus> outcomes;
  /// What the writing does not need any more, and need not wait for: it goes on the thread that
  /// fetches.
  std::shared_ptr<void> spent{};
};

/// How requests are written together. Both are called on one thread at a time, which need not be
/// the one that fetches.
struct GroupWriting {
  std::function<WrittenGroup(std::span<const ModifyRequest> group)> write;
  /// Gets ready what the next requests will be worked out from.
  std::function<void()> read_ahead;
};

/// Writes many requests in groups: what takes its time is the disk. While one group is written on
/// another thread the next is fetched on this one, which also hands over what became of each. The
/// first groups are small, so that little is waited for. What a request or a sink throws comes
/// through, when the group that is under way is written.
void WriteInGroups(const ModifySource& next, const ModifySink& sink, const GroupWriting& writing);

}  // namespace pelora::ldap
