// SPDX-License-Identifier: Apache-2.0
// What is left after a property sheet has been opened and closed many times.
#include <gmock/gmock.h>

#include <iostream>
#include <memory>

#include "resources/resource.h"
#include "server/class_table.h"
#include "tests/support/long_form.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/extension_test.h"
#include "tests/windows/support/malloc_counter.h"
#include "tests/windows/support/resource_counts.h"

namespace pelora::windows::test {
namespace {

const std::vector<std::string> kPaths = {"LDAP://CN=Ada,DC=fake,DC=example",
                                         "LDAP://CN=Ben,DC=fake,DC=example",
                                         "LDAP://CN=Cleo,DC=fake,DC=example"};
constexpr std::size_t kRoundsInShort = 500;
/// So many take a few seconds, and some ten on a machine that does much else.
constexpr std::size_t kRoundsAtOnce = 25;

/// The property tabs of the class table.
std::vector<std::string> Tabs() {
  std::vector<std::string> tabs;
  for (const ComponentClass& row : ClassTable()) {
    if (row.kind == ComponentKind::kPropertyPage) tabs.emplace_back(row.name);
  }
  return tabs;
}

class EnduranceTest : public ExtensionTest {
 protected:
  EnduranceTest() {
    for (const std::string& path : kPaths) {
      console_.directory().AddObject(
          path,
          {{"peloraAccount", Variant::Integer(1)},
           {"mail", Variant::String("ada@example.test")},
           {"otherMailbox", Variant::StringArray({"a@example.test", "b@example.test"})}},
          {pelora::IID_IADsUser, pelora::IID_IADsOU, pelora::IID_IADsContainer});
    }
    console_.Select({});
  }

  /// Every tab on one, two and three objects, until caches of the system are filled.
  [[nodiscard]] std::size_t WarmUpRounds() const { return 2 * tabs_.size() * kPaths.size(); }

  /// One of the tabs on some of the objects; users are edited, and that is applied.
  void Round() {
    const std::string& tab = tabs_[rounds_ % tabs_.size()];
    const auto count = static_cast<std::ptrdiff_t>(rounds_ / tabs_.size() % kPaths.size() + 1);
    ++rounds_;
    console_.Select({kPaths.begin(), kPaths.begin() + count});
    ASSERT_TRUE(console_.Open(tab)) << tab;
    if (tab == "CPropPageUser") {
      console_.User().Click(IDC_PELORA_HIDDEN);
      console_.sheet().ClickApply();
    }
    console_.Close();
    EXPECT_EQ(console_.selection().references(), 0U) << tab;
    EXPECT_EQ(console_.selection().locks(), 0U) << tab;
    console_.Select({});
    console_.directory().ClearCalls();
  }
  void Rounds(std::size_t count) {
    for (std::size_t round = 0; round < count && !HasFatalFailure(); ++round) Round();
  }
  void RoundsUnderWatch(std::size_t count) {
    for (std::size_t done = 0; done < count && !HasFatalFailure(); done += kRoundsAtOnce) {
      Rounds(kRoundsAtOnce);
      // A sign of life for the watchdog.
      SUCCEED();
    }
  }

  Console console_;
  const std::vector<std::string> tabs_ = Tabs();
  std::size_t rounds_ = 0;
};

TEST_F(EnduranceTest, ManySheetsLeaveNothingBehind) {
  const MallocCounter memory;
  RoundsUnderWatch(WarmUpRounds());
  const ResourceCounts before = CountResources();
  const long blocks_before = memory.live();
  const std::size_t rounds = pelora::testing::RoundsOr(kRoundsInShort);
  RoundsUnderWatch(rounds);
  const ResourceCounts after = CountResources();
  std::cout << "soak under Wine: " << rounds << " sheets; " << ::testing::PrintToString(before)
            << " -> " << ::testing::PrintToString(after) << "; blocks of memory " << blocks_before
            << " -> " << memory.live() << std::endl;
  // The system itself may keep a few for later.
  constexpr std::size_t kFew = 20;
  EXPECT_LE(after.handles, before.handles + kFew);
  EXPECT_LE(after.windows, before.windows + kFew);
  EXPECT_LE(after.drawing_objects, before.drawing_objects + kFew);
  EXPECT_EQ(after.windows_of_thread, before.windows_of_thread);
  EXPECT_LE(after.threads, before.threads + kFew);
  EXPECT_LE(memory.live(), blocks_before);
  EXPECT_EQ(memory.freed_twice(), 0);
  EXPECT_EQ(console_.directory().live_objects(), 0U);
  EXPECT_EQ(CanUnloadNow(), S_OK);
}

TEST_F(EnduranceTest, SheetsLeaveNoBlockOfMemoryBehind) {
  RoundsUnderWatch(WarmUpRounds());
  for (std::size_t part = 0; part < 4; ++part) {
    // Signs of life are kept, and count among the blocks.
    SUCCEED();
    const std::size_t before = CountHeapBlocks();
    Rounds(kRoundsAtOnce);
    EXPECT_EQ(CountHeapBlocks(), before);
  }
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
