// SPDX-License-Identifier: Apache-2.0
// The user tab of the built module, with each of its calls to the directory failing in turn: a
// sample of what is tried with every tab elsewhere.
#include <gmock/gmock.h>

#include <iostream>

#include "resources/resource.h"
#include "tests/windows/support/tab_test.h"

namespace pelora::windows::test {
namespace {

using pelora::testing::FakeAttributes;
using pelora::testing::FaultPoint;
using pelora::testing::MetFault;

constexpr const char* kUserPage = "CPropPageUser";
constexpr auto kServerDown = static_cast<HRESULT>(0x8007203AU);

class FaultMatrix : public TabTest {
 protected:
  struct Played {
    FakeAttributes before;
    FakeAttributes after;
    std::size_t calls = 0;
  };

  /// Opens the tab on a user of its own, edits and clicks OK until the sheet closes. The `nth` of
  /// its calls fails; 0: none.
  Played Play(std::size_t nth);

 private:
  /// Ticks a box, as an edit that the page hears of even where it is ticked.
  void Tick(ControlId box) {
    User().Click(box);
    if (Page().Check(box) != CheckState::kChecked) User().Click(box);
    EXPECT_EQ(Page().Check(box), CheckState::kChecked);
  }

  int users_ = 0;
};

FaultMatrix::Played FaultMatrix::Play(std::size_t nth) {
  const std::string path = "LDAP://CN=User " + std::to_string(++users_) + ",DC=fake,DC=example";
  directory().AddObject(path, {{"peloraAccount", Variant::Integer(1)},
                               {"peloraAdmin", Variant::Integer(0)},
                               {"peloraQuotaHard", Variant::Integer(500)},
                               {"mail", Variant::String("user@example.test")},
                               {"otherMailbox", Variant::StringArray({"other@example.test"})}});
  Played played{.before = directory().Values(path).value(), .after = {}};
  console_.Select({path});
  const std::size_t calls_before = console_.plan().calls();
  if (nth > 0) console_.plan().Fail(FaultPoint::kAnyCall, nth, kServerDown);
  // A tab that refuses stays out, and the sheet is opened once more.
  if (!console_.Open(kUserPage)) {
    EXPECT_EQ(console_.plan().pending(), 0U);
    EXPECT_TRUE(console_.Open(kUserPage));
  }
  EXPECT_LE(boxes_.TakeBoxes().size(), 1U);
  constexpr int kMostTries = 3;
  for (int tries = 0; sheet().IsOpen() && tries < kMostTries; ++tries) {
    Tick(IDC_PELORA_HIDDEN);
    Tick(IDC_QUOTA_OVERRIDE);
    Retype(IDC_QUOTA_HARD, "7");
    sheet().ClickOk();
    EXPECT_EQ(boxes_.TakeBoxes().size(), sheet().IsOpen() ? 1U : 0U);
    played.after = directory().Values(path).value();
    if (sheet().IsOpen()) {
      EXPECT_EQ(played.after, played.before) << "what is not committed is not there";
    }
  }
  EXPECT_FALSE(sheet().IsOpen());
  played.calls = console_.plan().calls() - calls_before;
  console_.Close();
  return played;
}

/// Without what cannot be told when a value was not read: that value itself, and what the tab
/// writes of the account's type with every apply.
FakeAttributes WithoutMisread(FakeAttributes attributes, const MetFault& met) {
  if (met.point != FaultPoint::kGet) return attributes;
  for (const std::string_view name :
       {std::string_view(met.attribute), std::string_view("peloraAdmin"),
        std::string_view("peloraSharedStoreOnly"), std::string_view("peloraResourceType"),
        std::string_view("peloraResourceCapacity")}) {
    std::erase_if(attributes, [name](const auto& value) { return value.first == name; });
  }
  return attributes;
}

TEST_F(FaultMatrix, WhateverCallFailsItIsToldAndOkOnceMoreDoesIt) {
  const Played smooth = Play(0);
  EXPECT_NE(smooth.after, smooth.before);
  EXPECT_GT(smooth.calls, 10U);
  for (std::size_t call = 1; call <= smooth.calls && !HasFailure(); ++call) {
    SCOPED_TRACE("call " + std::to_string(call));
    const Played played = Play(call);
    EXPECT_EQ(console_.plan().pending(), 0U);
    ASSERT_TRUE(console_.plan().last_met());
    const MetFault met = *console_.plan().last_met();
    EXPECT_EQ(WithoutMisread(played.after, met), WithoutMisread(smooth.after, met));
  }
  if (HasFailure()) return;
  std::cout << "faults injected and survived: " << smooth.calls << " (" << kUserPage
            << " of the module)" << std::endl;
}

}  // namespace
}  // namespace pelora::windows::test
