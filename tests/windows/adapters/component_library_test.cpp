// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <thread>

#include "hosts/windows/system_headers.h"
#include "hosts/windows/win32_component_library.h"
#include "tests/windows/support/window_player.h"

namespace pelora::windows {
namespace {

/// What the current thread is in; -1 for no apartment.
int Apartment() {
  APTTYPE type = APTTYPE_CURRENT;
  APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
  return CoGetApartmentType(&type, &qualifier) == S_OK ? type : -1;
}

TEST(Win32ComponentLibrary, PutsTheThreadIntoASingleThreadedApartmentAsOftenAsAsked) {
  std::thread([] {
    constexpr int kNone = -1;
    Win32ComponentLibrary library;
    EXPECT_NE(Apartment(), APTTYPE_STA);
    const LibraryThread thread = library.CoInitialize();
    EXPECT_EQ(thread, GetCurrentThreadId());
    EXPECT_EQ(library.CoInitialize(), thread);
    EXPECT_EQ(Apartment(), APTTYPE_STA);
    library.CoUninitialize(thread);
    EXPECT_EQ(Apartment(), APTTYPE_STA);
    library.CoUninitialize(thread);
    EXPECT_EQ(Apartment(), kNone);
  }).join();
}

TEST(Win32ComponentLibrary, GivesACountBackOnTheThreadThatTookIt) {
  Win32ComponentLibrary library;
  std::thread([&library] {
    const LibraryThread here = library.CoInitialize();
    for (int round = 0; round < 2; ++round) EXPECT_EQ(library.CoInitialize(), here);
    std::thread([&library, here] {
      const LibraryThread there = library.CoInitialize();
      library.CoUninitialize(here);
      library.CoUninitialize(here);
      EXPECT_EQ(Apartment(), APTTYPE_STA) << "nothing of this thread's was taken";
      library.CoUninitialize(there);
      EXPECT_EQ(Apartment(), -1);
    }).join();
    test::HandleWaitingMessages();
    EXPECT_EQ(Apartment(), APTTYPE_STA) << "one count is left";
    library.CoUninitialize(here);
    EXPECT_EQ(Apartment(), -1);
  }).join();
}

TEST(Win32ComponentLibrary, AThreadThatHasEndedHasTakenItsCountsAlong) {
  Win32ComponentLibrary library;
  for (int round = 0; round < 50; ++round) {
    LibraryThread ended = 0;
    std::thread([&] { ended = library.CoInitialize(); }).join();
    std::thread([&] {
      // The number may be the ended thread's.
      const LibraryThread thread = library.CoInitialize();
      library.CoUninitialize(thread);
      EXPECT_EQ(Apartment(), -1);
      if (thread != ended) library.CoUninitialize(ended);
      EXPECT_EQ(Apartment(), -1);
    }).join();
  }
}

TEST(Win32ComponentLibrary, AThreadOfAnotherKindOfApartmentHasNothingToGiveBack) {
  std::thread([] {
    Win32ComponentLibrary library;
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    library.CoUninitialize(library.CoInitialize());
    EXPECT_EQ(Apartment(), APTTYPE_MTA);
    CoUninitialize();
  }).join();
}

}  // namespace
}  // namespace pelora::windows
