// SPDX-License-Identifier: Apache-2.0
// Leaves the prefix without the module, so that a later run begins as the first one did.
#include <gtest/gtest.h>

#include "tests/windows/support/extension_module.h"

namespace pelora::windows::test {
namespace {

class UnregisterAtEnd final : public ::testing::Environment {
 public:
  void TearDown() override {
    if (!IsRegistered()) return;
    EXPECT_EQ(Unregister(), 0U);
  }
};

const ::testing::Environment* const kUnregisterAtEnd =
    ::testing::AddGlobalTestEnvironment(new UnregisterAtEnd);

}  // namespace
}  // namespace pelora::windows::test
