// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "hosts/changes/result.h"
#include "hosts/session/life/place_plan.h"
#include "hosts/session/write_failure.h"
#include "hosts/session/writing_desk.h"

namespace pelora::session {

/// What a person is asked before objects get another place or go.
struct PlaceQuestion {
  std::string title;
  std::string text;
  /// Each a sentence of its own: what goes along, what cannot be taken back.
  std::vector<std::string> notes{};
  /// What is said above what refers to the objects.
  std::string about_references;
  std::vector<Reference> references{};
  /// What has to be typed first, exactly; empty: nothing.
  std::string to_type;
  /// The button that goes on, with its key.
  std::string button;
};

[[nodiscard]] PlaceQuestion AskOfRemoval(const PlacePlan& plan);
/// `container` is what the container is called.
[[nodiscard]] PlaceQuestion AskOfMoving(const PlacePlan& plan, const std::string& container);
/// Only where something breaks there is a reason to ask.
[[nodiscard]] PlaceQuestion AskOfRenaming(const PlacePlan& plan, const std::string& name);

/// "3 users and 1 group", say: counts with the names of types.
[[nodiscard]] std::string CountText(const std::vector<TypeCount>& counts);

/// Why an object was not renamed, moved or deleted and what can be done about it, for one line.
[[nodiscard]] std::string PlaceReason(const changes::Result& result, DirectoryPlace place);

/// What is told of one object's renaming, moving or deletion that was not done. `done` is what was
/// to be: "renamed".
[[nodiscard]] ShownFailure PlaceFailure(const std::string& name, std::string_view done,
                                        const changes::Result& result, DirectoryPlace place);

}  // namespace pelora::session
