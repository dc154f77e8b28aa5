// SPDX-License-Identifier: Apache-2.0
// What is left after a property sheet has been opened and closed many times.
#include <gmock/gmock.h>

#include <iostream>
#include <memory>

#include "resources/resource.h"
#include "tests/support/long_form.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/extension_test.h"
#include "tests/windows/support/malloc_counter.h"
#include "tests/windows/support/resource_counts.h"

namespace pelora::windows::test {
namespace {

constexpr const char* kPath = "LDAP://CN=Ada,DC=fake,DC=example";
constexpr std::size_t kRoundsInShort = 1000;
/// Until caches of the system are filled.
constexpr std::size_t kWarmUpRounds = 20;
/// So many take a few seconds.
constexpr std::size_t kRoundsAtOnce = 50;
/// Every so many rounds something is edited and applied.
constexpr std::size_t kApplyEvery = 10;

class EnduranceTest : public ExtensionTest {
 protected:
  EnduranceTest() {
    console_.directory().AddObject(
        kPath, {{"peloraAccount", Variant::Integer(1)},
                {"mail", Variant::String("ada@example.test")},
                {"otherMailbox", Variant::StringArray({"a@example.test", "b@example.test"})}});
    console_.Select({kPath});
  }

  void Round(std::size_t number) {
    ASSERT_TRUE(console_.Open("CPropPageUser"));
    if (number % kApplyEvery == 0) {
      console_.User().Click(IDC_PELORA_HIDDEN);
      console_.sheet().ClickApply();
    }
    console_.Close();
    console_.directory().ClearCalls();
  }
  void Rounds(std::size_t count) {
    for (std::size_t round = 0; round < count && !HasFatalFailure(); ++round) Round(round);
  }
  void RoundsUnderWatch(std::size_t count) {
    for (std::size_t done = 0; done < count && !HasFatalFailure(); done += kRoundsAtOnce) {
      Rounds(kRoundsAtOnce);
      // A sign of life for the watchdog.
      SUCCEED();
    }
  }

  Console console_;
};

TEST_F(EnduranceTest, AThousandSheetsLeaveNothingBehind) {
  const MallocCounter memory;
  Rounds(kWarmUpRounds);
  const ResourceCounts before = CountResources();
  const long blocks_before = memory.live();
  const std::size_t rounds = pelora::testing::RoundsOr(kRoundsInShort);
  RoundsUnderWatch(rounds);
  const ResourceCounts after = CountResources();
  std::cout << "soak under Wine: " << rounds << " sheets; " << ::testing::PrintToString(before)
            << " -> " << ::testing::PrintToString(after) << "; blocks of memory " << blocks_before
            << " -> " << memory.live() << std::endl;
  // The system itself may keep a few for later.
  constexpr std::size_t kFew = kRoundsInShort / 50;
  EXPECT_LE(after.handles, before.handles + kFew);
  EXPECT_LE(after.windows, before.windows + kFew);
  EXPECT_LE(after.drawing_objects, before.drawing_objects + kFew);
  EXPECT_EQ(after.windows_of_thread, before.windows_of_thread);
  EXPECT_LE(after.threads, before.threads + kFew);
  EXPECT_LE(memory.live(), blocks_before);
  EXPECT_EQ(memory.freed_twice(), 0);
  EXPECT_EQ(console_.directory().live_objects(), 0U);
  EXPECT_EQ(console_.selection().references(), 0U);
  EXPECT_EQ(console_.selection().locks(), 0U);
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

TEST_F(EnduranceTest, SheetsLeaveNoBlockOfMemoryBehind) {
  Rounds(kWarmUpRounds);
  const std::size_t before = CountHeapBlocks();
  Rounds(2 * kRoundsAtOnce);
  EXPECT_EQ(CountHeapBlocks(), before);
}

TEST(ResourceCounts, NoticeABlockOfMemoryThatIsNotGivenBack) {
  const std::size_t before = CountHeapBlocks();
  const auto kept = std::make_unique<int>(1);
  EXPECT_EQ(CountHeapBlocks(), before + 1);
}

TEST(ResourceCounts, NoticeWhatIsNotGivenBack) {
  constexpr std::size_t kMany = 100;
  // The first window of a thread brings another one along.
  const HWND first = CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                     nullptr, nullptr);
  const ResourceCounts before = CountResources();
  std::vector<HANDLE> handles;
  std::vector<HWND> windows = {first};
  std::vector<HBRUSH> brushes;
  for (std::size_t round = 0; round < kMany; ++round) {
    handles.push_back(CreateEventW(nullptr, FALSE, FALSE, nullptr));
    windows.push_back(CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, 1, 1, nullptr, nullptr,
                                      nullptr, nullptr));
    brushes.push_back(CreateSolidBrush(RGB(round, 0, 0)));
  }
  const ResourceCounts after = CountResources();
  for (const HANDLE handle : handles) CloseHandle(handle);
  for (const HWND window : windows) DestroyWindow(window);
  for (const HBRUSH brush : brushes) DeleteObject(brush);
  EXPECT_GE(after.handles, before.handles + kMany);
  EXPECT_GE(after.windows, before.windows + kMany);
  EXPECT_GE(after.drawing_objects, before.drawing_objects + kMany);
  EXPECT_EQ(after.windows_of_thread, before.windows_of_thread + kMany);
}

}  // namespace
}  // namespace pelora::windows::test
