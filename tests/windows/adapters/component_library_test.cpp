// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <thread>

#include "hosts/windows/system_headers.h"
#include "hosts/windows/win32_component_library.h"

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
    library.CoInitialize();
    library.CoInitialize();
    EXPECT_EQ(Apartment(), APTTYPE_STA);
    library.CoUninitialize();
    EXPECT_EQ(Apartment(), APTTYPE_STA);
    library.CoUninitialize();
    EXPECT_EQ(Apartment(), kNone);
  }).join();
}

}  // namespace
}  // namespace pelora::windows
