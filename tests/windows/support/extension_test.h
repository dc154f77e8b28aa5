// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include "tests/windows/support/extension_module.h"

namespace pelora::windows::test {

/// Base of suites that use the module by its registration. The module stays registered until the
/// program ends or another suite undoes it.
class ExtensionTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    if (!IsRegistered()) {
      ASSERT_EQ(Register(), 0U);
    }
  }
};

}  // namespace pelora::windows::test
