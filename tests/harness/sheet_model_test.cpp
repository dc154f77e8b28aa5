// SPDX-License-Identifier: Apache-2.0
// Somebody does on sheets of one and of many objects whatever comes to mind: edits, sets back,
// applies, goes back, gives up, while somebody else changes the same objects and the directory says
// no now and then. Nothing that was left alone is ever another afterwards.
#include <gmock/gmock.h>

#include <iostream>

#include "tests/harness/random_objects.h"
#include "tests/harness/sheet_player.h"
#include "tests/support/long_form.h"

namespace pelora::testing {
namespace {

TEST(SheetModel, NothingThatWasLeftAloneIsEverAnother) {
  constexpr std::size_t kSteps = 60;
  const std::size_t sheets = RoundsOr(400);
  const std::vector<std::string> classes = ClassesWithTabs();
  PlayedSheets played;
  for (unsigned seed = 1; played.sheets < sheets && !HasFailure(); ++seed) {
    const std::string& object_class = classes[seed % classes.size()];
    SCOPED_TRACE(object_class + ", seed " + std::to_string(seed));
    const Dice dice = DiceOf(seed);
    SheetPlayer player(object_class, dice, dice, played);
    std::size_t step = 0;
    player.Play([&step] { return step++ < kSteps; });
    if (HasFailure()) std::cout << player.story();
  }
  if (HasFailure()) return;
  // All of it was tried, and often.
  EXPECT_GT(played.of_several, sheets / 3);
  EXPECT_GT(played.edits, sheets * 2);
  EXPECT_GT(played.applied, sheets / 3);
  EXPECT_GT(played.written, sheets);
  EXPECT_GT(played.found_stored, sheets);
  for (const std::size_t tried :
       {played.set_back, played.removed, played.held, played.not_applied, played.cancelled,
        played.taken_out, played.theirs_kept, played.not_opened}) {
    EXPECT_GT(tried, sheets / 50);
  }
  std::cout << "random sheets: " << played.sheets << ", " << played.of_several << " of several, "
            << played.edits << " edits, " << played.applied << " applied, " << played.not_applied
            << " not, " << played.cancelled << " cancelled, " << played.written
            << " values written, " << played.found_stored << " found as they were to be, "
            << played.not_opened << " not opened whole, nothing else changed\n";
}

}  // namespace
}  // namespace pelora::testing
