// SPDX-License-Identifier: Apache-2.0
// A long day: sheets are opened on random selections, edited, applied and closed, one after
// another. Memory, open files and threads stay what they were once everything has been used.
#include <gmock/gmock.h>
#include <malloc.h>

#include <array>
#include <cstddef>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <random>

#include "tests/harness/random_objects.h"
#include "tests/harness/sheet_scene.h"
#include "tests/support/long_form.h"
#include "tests/support/memory_store.h"

/// The sanitizer's own count, where it has replaced the allocator.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes() __attribute__((weak));

namespace pelora::testing {
namespace {

/// Bytes that were asked for and not given back.
std::size_t AllocatedBytes() {
  return __sanitizer_get_current_allocated_bytes == nullptr
             ? mallinfo2().uordblks
             : __sanitizer_get_current_allocated_bytes();
}

std::size_t EntriesOf(const std::filesystem::path& folder) {
  return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder),
                                                std::filesystem::directory_iterator()));
}

/// What the process holds.
struct Holdings {
  std::size_t memory = AllocatedBytes();
  std::size_t files = EntriesOf("/proc/self/fd");
  std::size_t threads = EntriesOf("/proc/self/task");
};

class Soak : public ::testing::Test {
 protected:
  /// One sheet: what is selected and what becomes of it is left to chance, but not the company's
  /// size: every round begins with the same directory.
  void Round() {
    const std::string& object_class = classes_[random_() % classes_.size()];
    std::vector<std::string> names;
    const std::size_t count = random_() % 3 + 1;
    for (std::size_t place = 0; place < count; ++place) {
      names.push_back("CN=object" + std::to_string(place) + ",DC=memory,DC=example");
    }
    MemoryStore store;
    SheetScene scene(store, object_class, names,
                     {.chosen = "CN=chosen,DC=memory,DC=example", .account = count == 1});
    for (ldap::Entry& entry : scene.FirstEntries()) store.Place(std::move(entry));
    const MemoryStore::Entries before = store.entries();
    ASSERT_EQ(scene.Open(), "");
    if (random_() % 4 == 0) {
      // Looked at, and perhaps edited, and closed.
      if (random_() % 2 == 0) scene.Edit();
      EXPECT_TRUE(scene.Cancel());
      EXPECT_EQ(store.entries(), before);
    } else {
      EXPECT_GT(scene.Edit(), 0U);
      EXPECT_TRUE(scene.Ok());
      EXPECT_NE(store.entries(), before);
    }
    EXPECT_EQ(scene.TakeBoxes(), std::vector<std::string>());
    scene.Close();
    EXPECT_FALSE(scene.IsLibraryLeft());
  }

  const std::vector<std::string> classes_ = ClassesWithTabs();
  std::mt19937 random_{20};
};

constexpr std::size_t kWarmUp = 60;
constexpr std::size_t kRoundsInShort = 150;

/// What there may be after so many sheets: what each of them leaves behind would be more, be it one
/// small block.
std::size_t BoundOfMemory(const Holdings& before, std::size_t rounds) {
  constexpr std::size_t kForEach = 4;
  constexpr std::size_t kForAll = 4096;
  return before.memory + kForEach * rounds + kForAll;
}

TEST_F(Soak, ABlockThatEachSheetLeavesBehindIsSeen) {
  std::vector<std::unique_ptr<std::array<char, 64>>> left_behind;
  left_behind.reserve(kRoundsInShort);
  for (std::size_t round = 0; round < kWarmUp && !HasFailure(); ++round) Round();
  const Holdings before;
  for (std::size_t round = 0; round < kRoundsInShort && !HasFailure(); ++round) {
    Round();
    left_behind.push_back(std::make_unique<std::array<char, 64>>());
  }
  const Holdings after;
  EXPECT_GT(after.memory, BoundOfMemory(before, kRoundsInShort));
}

TEST_F(Soak, NothingGrowsOnceEverythingHasBeenUsed) {
  for (std::size_t round = 0; round < kWarmUp && !HasFailure(); ++round) Round();
  const Holdings before;
  const std::size_t rounds = RoundsOr(kRoundsInShort);
  for (std::size_t round = 0; round < rounds && !HasFailure(); ++round) Round();
  const Holdings after;
  std::cout << "soak: " << rounds << " sheets; memory " << before.memory << " -> " << after.memory
            << " bytes, files " << before.files << " -> " << after.files << ", threads "
            << before.threads << " -> " << after.threads << "\n";
  EXPECT_LE(after.memory, BoundOfMemory(before, rounds));
  EXPECT_EQ(after.files, before.files);
  EXPECT_EQ(after.threads, before.threads);
}

}  // namespace
}  // namespace pelora::testing
