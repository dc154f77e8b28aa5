// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>

#include "tests/windows/choosers/chooser_test.h"
#include "tests/windows/support/stand_in_picker.h"

namespace pelora::windows::test {

/// Base of suites that choose with the object picker.
class ObjectPickerTest : public ChooserTest {
 protected:
  ~ObjectPickerTest() override { EXPECT_EQ(picker_.references(), 0U); }

  HRESULT PickUsers() { return chooser().SelectUsers(dialog(), names_, SelectionMode::kMultiple); }
  /// Everything was given back, and the memory released once if it was handed out at all.
  static void ExpectGivenBack(const PickedObjects& picked) {
    EXPECT_EQ(picked.references(), 0U);
    EXPECT_EQ(picked.released(), picked.rendered());
    EXPECT_EQ(picked.locks(), 0U);
  }
  void ExpectFailure(PickedObjects& picked, HRESULT expected) {
    picker_.Choose(picked);
    EXPECT_EQ(PickUsers(), expected);
    EXPECT_THAT(names_, ::testing::ElementsAre("from before"));
    ExpectGivenBack(picked);
  }

  StandInPicker picker_;
};

}  // namespace pelora::windows::test
