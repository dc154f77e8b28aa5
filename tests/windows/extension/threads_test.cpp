// SPDX-License-Identifier: Apache-2.0
// A console that shows its sheets on threads of their own: components are made and their pages
// handed over on its thread, the pages are used and released on the sheet's.
#include <gtest/gtest.h>

#include <thread>

#include "tests/windows/support/extension_test.h"
#include "tests/windows/support/page_collector.h"
#include "tests/windows/support/window_player.h"

namespace pelora::windows::test {
namespace {

class ThreadsTest : public ExtensionTest {
 protected:
  static bool IsInApartment() {
    APTTYPE type = APTTYPE_CURRENT;
    APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
    return CoGetApartmentType(&type, &qualifier) == S_OK;
  }
  /// Makes a tab on this thread and gives its page.
  static HPROPSHEETPAGE MakePage(Ref<::IShellExtInit>& tab) {
    PageCollector pages;
    EXPECT_EQ(Activate(ClassId("CPropPageUser"), tab), S_OK);
    EXPECT_EQ(QueryFor<::IShellPropSheetExt>(*tab)->AddPages(pages.function(), pages.parameter()),
              S_OK);
    return pages.Take().at(0);
  }
};

TEST_F(ThreadsTest, APageReleasedOnTheSheetsThreadTakesNothingThereAndGivesBackHere) {
  std::thread([] {
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    {
      Ref<::IShellExtInit> tab;
      const HPROPSHEETPAGE page = MakePage(tab);
      tab.Reset();
      std::thread([page] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        DestroyPropertySheetPage(page);
        EXPECT_TRUE(IsInApartment()) << "the sheet's thread keeps its count";
        CoUninitialize();
        EXPECT_FALSE(IsInApartment());
      }).join();
      EXPECT_EQ(CanUnloadNow(), S_OK);
      // The code must stand until the count has been given back.
      UnloadUnused();
      EXPECT_TRUE(IsLoaded());
      HandleWaitingMessages();
    }
    CoUninitialize();
    EXPECT_FALSE(IsInApartment()) << "no count is left behind";
  }).join();
}

TEST_F(ThreadsTest, ReferencesAreCountedOnAnyThread) {
  Ref<::IShellExtInit> tab;
  const HPROPSHEETPAGE page = MakePage(tab);
  constexpr int kRounds = 300'000;
  const auto use = [&tab](DWORD_PTR processor) {
    SetThreadAffinityMask(GetCurrentThread(), processor);
    for (int round = 0; round < kRounds; ++round) {
      tab->AddRef();
      tab->Release();
    }
  };
  // The suite runs on one processor, where nothing would ever meet.
  DWORD_PTR own = 0;
  DWORD_PTR all = 0;
  ASSERT_TRUE(GetProcessAffinityMask(GetCurrentProcess(), &own, &all) != FALSE);
  SetProcessAffinityMask(GetCurrentProcess(), all);
  std::thread first(use, 1);
  std::thread second(use, 2);
  first.join();
  second.join();
  SetProcessAffinityMask(GetCurrentProcess(), own);
  tab->AddRef();
  EXPECT_EQ(tab->Release(), 2U) << "one here and the page's";
  DestroyPropertySheetPage(page);
  tab->AddRef();
  EXPECT_EQ(tab->Release(), 1U);
}

}  // namespace
}  // namespace pelora::windows::test
