// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "hosts/changes/result.h"
#include "hosts/session/change_history.h"
#include "hosts/session/errands.h"
#include "hosts/session/life/place_plan.h"

namespace pelora::session {

/// Writes a plan, one object after the other and whatever becomes of some, and keeps it in the
/// history, which may be null, so that it can be taken back. What became of each change, in their
/// order.
[[nodiscard]] std::vector<changes::Result> WritePlan(ldap::IDirectoryStore& store,
                                                     const PlacePlan& plan, ChangeHistory* history,
                                                     IErrands& errands);

/// What of a plan is not done yet, by its results: for trying again.
void KeepWhatIsLeft(const std::vector<changes::Result>& results, PlacePlan& plan);

}  // namespace pelora::session
