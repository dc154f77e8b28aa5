// SPDX-License-Identifier: Apache-2.0
#include "directory/error_text.h"

#include <gtest/gtest.h>

#include <array>

namespace pelora {
namespace {

struct Row {
  HRESULT status;
  const char* message;
  const char* text;
  MessageIcon icon;
};

const std::array<Row, 14> kRows = {{
    {S_OK, "", "Unknown error occured", MessageIcon::kWarning},
    {E_FAIL, "", "Unknown error occured\r\n\r\nError code: 0X80004005", MessageIcon::kError},
    {S_ADS_ERRORSOCCURRED, "Failed on field 'mail",
     "Failed on field 'mail\r\n\r\nError code: 0X5011", MessageIcon::kWarning},
    {S_FALSE, "A notice", "A notice\r\n\r\nError code: 0X1", MessageIcon::kWarning},
    {kObjectAlreadyExists, "", "Unknown error occured\r\n\r\nError code: 0X80071392",
     MessageIcon::kError},
    {E_ACCESSDENIED, "Unable to get connection with the ldap user.",
     "Unable to get connection with the ldap user.\r\n\r\nError code: 0X80070005",
     MessageIcon::kError},
    {kNoSuchObject, "Unable to get connection with the ldap user",
     "Unable to get connection with the ldap user\r\n\r\nError code: 0X80072030",
     MessageIcon::kError},
    {E_FAIL, "Validation of input fields failed: Missing Email Address",
     "Validation of input fields failed: Missing Email Address\r\n\r\nError code: 0X80004005",
     MessageIcon::kError},
    {E_OUTOFMEMORY, "Unable to collect pelora attributes",
     "Unable to collect pelora attributes\r\n\r\nError code: 0X8007000E", MessageIcon::kError},
    {E_ADS_PROPERTY_NOT_FOUND, "Failed to update object: ",
     "Failed to update object: \r\n\r\nError code: 0X8000500D", MessageIcon::kError},
    {S_OK, "Pelora user requires at least one email address",
     "Pelora user requires at least one email address", MessageIcon::kWarning},
    {S_OK,
     "The new object cannot be created because the name is already in use.\r\nPlease select a "
     "different name and try again.",
     "The new object cannot be created because the name is already in use.\r\nPlease select a "
     "different name and try again.",
     MessageIcon::kWarning},
    {static_cast<HRESULT>(0x7FFFFFFF), "m", "m\r\n\r\nError code: 0X7FFFFFFF",
     MessageIcon::kWarning},
    {static_cast<HRESULT>(0xFFFFFFFFU), "m", "m\r\n\r\nError code: 0XFFFFFFFF",
     MessageIcon::kError},
}};

TEST(ErrorText, EveryMessageHasItsTextAndIcon) {
  for (const Row& row : kRows) {
    const Message message = MakeErrorMessage(row.status, row.message);
    EXPECT_EQ(message.text, row.text);
    EXPECT_EQ(message.icon, row.icon) << row.text;
    EXPECT_EQ(message.caption, "Pelora Error");
    EXPECT_EQ(message.buttons, MessageButtons::kOk);
  }
}

TEST(ErrorText, IconsHaveThePlatformsNumbers) {
  EXPECT_EQ(static_cast<unsigned>(MessageIcon::kError), 0x10U);
  EXPECT_EQ(static_cast<unsigned>(MessageIcon::kWarning), 0x30U);
}

}  // namespace
}  // namespace pelora
