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

TEST(ParseGuid, ReadsWhatIsWrittenInEitherCase) {
  const Guid guid{0xFA1B2C3D, 0xFE5F, 0x8607, {0x08, 0xF9, 0xAB, 0xCD, 0x0E, 0xEF, 0x10, 0xFF}};
  Guid read;
  EXPECT_TRUE(ParseGuid(GuidText(guid), read));
  EXPECT_EQ(read, guid);
  read = {};
  EXPECT_TRUE(ParseGuid("{fa1b2c3d-fe5f-8607-08f9-abcd0eef10ff}", read));
  EXPECT_EQ(read, guid);
}

TEST(ParseGuid, RefusesEverythingElse) {
  const Guid before{1, 2, 3, {4}};
  Guid guid = before;
  for (const char* text :
       {"", "{}", "fa1b2c3d-fe5f-8607-08f9-abcd0eef10ff", "{fa1b2c3d-fe5f-8607-08f9-abcd0eef10ff",
        "{fa1b2c3d-fe5f-8607-08f9-abcd0eef10ff} ", "{fa1b2c3dxfe5f-8607-08f9-abcd0eef10ff}",
        "{ga1b2c3d-fe5f-8607-08f9-abcd0eef10ff}", "{-a1b2c3d-fe5f-8607-08f9-abcd0eef10ff}",
        "{fa1b2c3d-fe5f-8607-08f9-abcd0eef10f }"}) {
    EXPECT_FALSE(ParseGuid(text, guid)) << text;
  }
  EXPECT_EQ(guid, before);
}

}  // namespace
}  // namespace pelora
