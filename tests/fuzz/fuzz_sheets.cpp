// SPDX-License-Identifier: Apache-2.0
// Takes any bytes for what somebody does on a sheet of one or of several objects: which page, which
// field, which edit, apply, OK, cancel, what somebody else changes meanwhile, which request fails.
// What is written is what a simple model says, and nothing else.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "tests/harness/random_objects.h"
#include "tests/harness/sheet_player.h"

namespace {

using pelora::testing::ByteDice;
using pelora::testing::Dice;
using pelora::testing::DiceOf;

constexpr std::size_t kMostSteps = 200;
/// How many directories there are to play on.
constexpr std::size_t kContents = 256;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteDice bytes({data, size});
  const Dice dice = [&bytes](std::size_t sides) { return bytes.Roll(sides); };
  const auto classes = pelora::testing::ClassesWithTabs();
  const std::string& object_class = classes[dice(classes.size())];
  // One byte for all of it: the rest is for what is done.
  const Dice contents = DiceOf(static_cast<unsigned>(dice(kContents)));
  pelora::testing::PlayedSheets played;
  pelora::testing::SheetPlayer player(object_class, contents, dice, played);
  std::size_t step = 0;
  player.Play([&] { return !bytes.IsUsedUp() && step++ < kMostSteps; });
  const bool is_told = std::getenv("PELORA_TELL_STORY") != nullptr;
  if (is_told || ::testing::Test::HasFailure()) {
    std::cout << (played.of_several > 0 ? "several of " : "one ") << object_class << "\n"
              << player.story() << std::flush;
  }
  if (::testing::Test::HasFailure()) std::abort();
  return 0;
}
