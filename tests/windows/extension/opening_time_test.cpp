// SPDX-License-Identifier: Apache-2.0
// How long it takes from the class factory to a shown page, beside a blank page in the same sheet.
// The figures are printed and not judged.
#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <vector>

#include "tests/windows/support/console.h"
#include "tests/windows/support/extension_test.h"

namespace pelora::windows::test {
namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr const char* kPath = "LDAP://CN=Ada,DC=fake,DC=example";
constexpr int kRounds = 21;

/// Median of the time that opening takes; what was opened is closed off the clock.
template <class Open, class Close>
double MedianTime(const Open& open, const Close& close) {
  std::vector<double> times;
  for (int round = 0; round < kRounds; ++round) {
    const auto start = std::chrono::steady_clock::now();
    open();
    times.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
    close();
  }
  std::ranges::nth_element(times, times.begin() + kRounds / 2);
  return times[kRounds / 2];
}

using OpeningTimeTest = ExtensionTest;

TEST_F(OpeningTimeTest, OfAUserTabBesideABlankPage) {
  BlankPage blank;
  std::optional<SheetWindow> sheet;
  const double blank_time = MedianTime(
      [&] {
        sheet.emplace(std::vector{blank.Make()});
        UpdateWindow(sheet->window());
      },
      [&] { sheet.reset(); });
  Console console;
  console.directory().AddObject(kPath, {{"peloraAccount", Variant::Integer(1)},
                                        {"mail", Variant::String("ada@example.test")}});
  console.Select({kPath});
  const double user_time = MedianTime(
      [&] {
        ASSERT_TRUE(console.Open("CPropPageUser"));
        UpdateWindow(console.sheet().window());
      },
      [&] { console.Close(); });
  std::printf("blank page %.2f ms, user tab %.2f ms, ratio %.2f\n", blank_time, user_time,
              user_time / blank_time);
  RecordProperty("blank_page_ms", std::to_string(blank_time));
  RecordProperty("user_tab_ms", std::to_string(user_time));
}

}  // namespace
}  // namespace pelora::windows::test
