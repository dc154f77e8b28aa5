// SPDX-License-Identifier: Apache-2.0
// What it takes from the class factory to a shown page, beside a blank page in the same sheet and
// beside the same controls with nobody behind them. The times are printed; judged are the counts
// that they come from: no window more than the bare controls are, and no question asked twice.
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "hosts/windows/values/unique_resource.h"
#include "resources/resource.h"
#include "tests/windows/support/console.h"
#include "tests/windows/support/extension_test.h"

namespace pelora::windows::test {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr const char* kPath = "LDAP://CN=Ada,DC=fake,DC=example";
constexpr int kRounds = 5;

template <class Open>
double TimeOf(const Open& open) {
  const auto start = std::chrono::steady_clock::now();
  open();
  return Milliseconds(std::chrono::steady_clock::now() - start).count();
}

double MedianOf(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::ranges::nth_element(times, middle);
  return *middle;
}

INT_PTR CALLBACK DoNothing(HWND /*window*/, UINT /*message*/, WPARAM /*wide*/, LPARAM /*narrow*/) {
  return FALSE;
}

/// A page of the module's template with nobody behind it.
HPROPSHEETPAGE MakeBarePage(HMODULE module, DialogId dialog) {
  PROPSHEETPAGEW page = {};
  page.dwSize = sizeof(page);
  page.dwFlags = PSP_USETITLE;
  page.hInstance = module;
  page.pszTemplate = MAKEINTRESOURCEW(dialog);
  page.pszTitle = L"Bare";
  page.pfnDlgProc = &DoNothing;
  return CreatePropertySheetPageW(&page);
}

/// The windows in a window.
int WindowsIn(HWND window) {
  int count = 0;
  const auto add = [](HWND /*child*/, LPARAM sum) -> BOOL {
    ++*reinterpret_cast<int*>(sum);
    return TRUE;
  };
  EnumChildWindows(window, add, reinterpret_cast<LPARAM>(&count));
  return count;
}

using OpeningTimeTest = ExtensionTest;

TEST_F(OpeningTimeTest, OfAUserTabBesideABlankPage) {
  BlankPage blank;
  Console console;
  console.directory().AddObject(kPath, {{"peloraAccount", Variant::Integer(1)},
                                        {"mail", Variant::String("ada@example.test")}});
  console.Select({kPath});
  std::vector<double> blank_times;
  std::vector<double> bare_times;
  std::vector<double> user_times;
  int bare_windows = 0;
  int user_windows = 0;
  std::vector<std::string> calls;
  const UniqueLibrary module(LoadLibraryW(ExtensionPath().c_str()));
  // In turn, so that whatever else the machine does meets both; closing is off the clock.
  for (int round = 0; round < kRounds; ++round) {
    std::optional<SheetWindow> sheet;
    blank_times.push_back(TimeOf([&] {
      sheet.emplace(std::vector{blank.Make()});
      UpdateWindow(sheet->window());
    }));
    sheet.reset();
    bare_times.push_back(TimeOf([&] {
      sheet.emplace(std::vector{MakeBarePage(module.Get(), IDD_PROPPAGE_USER)});
      UpdateWindow(sheet->window());
    }));
    bare_windows = WindowsIn(sheet->window());
    sheet.reset();
    static_cast<void>(console.TakeCalls());
    user_times.push_back(TimeOf([&] {
      ASSERT_TRUE(console.Open("CPropPageUser"));
      UpdateWindow(console.sheet().window());
    }));
    user_windows = WindowsIn(console.sheet().window());
    calls = console.TakeCalls();
    console.Close();
  }
  const double blank_time = MedianOf(std::move(blank_times));
  const double bare_time = MedianOf(std::move(bare_times));
  const double user_time = MedianOf(std::move(user_times));
  std::printf("blank page %.2f ms, bare controls %.2f ms, user tab %.2f ms, ratio %.2f\n",
              blank_time, bare_time, user_time, user_time / blank_time);
  EXPECT_EQ(user_windows, bare_windows);
  EXPECT_FALSE(calls.empty());
  std::ranges::sort(calls);
  const auto twice = std::ranges::adjacent_find(calls);
  EXPECT_EQ(twice, calls.end()) << *twice;
  RecordProperty("blank_page_ms", std::to_string(blank_time));
  RecordProperty("bare_controls_ms", std::to_string(bare_time));
  RecordProperty("user_tab_ms", std::to_string(user_time));
}

}  // namespace
}  // namespace pelora::windows::test
