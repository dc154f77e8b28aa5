// SPDX-License-Identifier: Apache-2.0
#include "server/guid_text.h"

#include <gtest/gtest.h>

namespace pelora {
namespace {

TEST(GuidText, IsInBracesAndUpperCase) {
  EXPECT_EQ(
      GuidText({0x0A1B2C3D, 0x4E5F, 0x0607, {0x08, 0x09, 0xAB, 0xCD, 0x0E, 0xEF, 0x10, 0x11}}),
      "{0A1B2C3D-4E5F-0607-0809-ABCD0EEF1011}");
}

TEST(GuidText, KeepsLeadingZeros) {
  EXPECT_EQ(GuidText(IID_IUnknown), "{00000000-0000-0000-C000-000000000046}");
}

}  // namespace
}  // namespace pelora
