// SPDX-License-Identifier: Apache-2.0
#include "hosts/ctl/pages/fulfil_wishes.h"

#include <algorithm>
#include <vector>

namespace pelora::ctl {
namespace {

/// Only these have others depend on them.
bool MayEnable(const Wish* wish) {
  return wish->field->row.kind == FieldKind::kFlag || wish->field->row.kind == FieldKind::kChoice;
}

}  // namespace

void FulfilWishes(std::span<const Wish> wishes, const OperatorOf& operator_of) {
  std::vector<const Wish*> left;
  for (const Wish& wish : wishes) left.push_back(&wish);
  std::stable_partition(left.begin(), left.end(), &MayEnable);
  while (!left.empty()) {
    auto next = std::ranges::find_if(
        left, [&](const Wish* wish) { return operator_of(*wish).IsEnabled(*wish); });
    // Nothing that was asked for enables what is left: the first of it says so.
    if (next == left.end()) next = left.begin();
    operator_of(**next).Fulfil(**next);
    left.erase(next);
  }
}

}  // namespace pelora::ctl
