// SPDX-License-Identifier: Apache-2.0
#include "hosts/ldap/write_in_groups.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "hosts/ldap/beside_thread.h"

namespace pelora::ldap {
namespace {

/// So many are written together at first, so that others can be worked out while they are; each
/// time there are twice as many.
constexpr std::size_t kFewestTogether = 256;
constexpr std::size_t kMostTogether = 2048;

/// The next requests, `most` of them; fewer: there are no more.
std::vector<ModifyRequest> Fetch(const ModifySource& next, std::size_t most) {
  std::vector<ModifyRequest> group;
  group.reserve(most);
  while (group.size() < most) {
    std::optional<ModifyRequest> request = next();
    if (!request) break;
    group.push_back(std::move(*request));
  }
  return group;
}

void HandOver(WrittenGroup written, const ModifySink& sink) {
  for (StoreStatus& status : written.outcomes) sink(std::move(status));
}

}  // namespace

void WriteInGroups(const ModifySource& next, const ModifySink& sink, const GroupWriting& writing) {
  // Fetched before anything is locked: the source may ask for more.
  std::size_t most = kFewestTogether;
  std::vector<ModifyRequest> group = Fetch(next, most);
  WrittenGroup written;
  // One thread for all groups: a thread that ends gives back what it has of the memory. It goes
  // first, and waits for what is under way, which works on the two above.
  std::optional<BesideThread> beside;
  while (group.size() == most) {
    // While these are written the next ones are fetched, which takes as long, and needs what was
    // announced: nothing can be read before all of them are written.
    writing.read_ahead();
    most = std::min(2 * most, kMostTogether);
    if (!beside) beside.emplace();
    beside->Begin([&] {
      written = writing.write(group);
      writing.read_ahead();
    });
    std::vector<ModifyRequest> following = Fetch(next, most);
    beside->Await();
    HandOver(std::exchange(written, {}), sink);
    group = std::move(following);
  }
  HandOver(writing.write(group), sink);
}

}  // namespace pelora::ldap
