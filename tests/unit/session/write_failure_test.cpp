// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/write_failure.h"

#include <gmock/gmock.h>

namespace pelora::session {
namespace {

using changes::Change;
using changes::Outcome;
using changes::Result;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const FieldLabels kLabels = {{"peloraQuotaHard", "Hard limit"},
                             {"peloraAdmin", "Account type"},
                             {"peloraResourceType", "Account type"}};

Change ChangeOf(const std::vector<std::string>& attributes) {
  Change change;
  change.dn = "CN=Ada,DC=x";
  for (const std::string& attribute : attributes) {
    change.attributes.push_back({.attribute = attribute});
  }
  return change;
}

Result NotDone(int code, const std::string& text) {
  return changes::NotDone("CN=Ada,DC=x", {code, text});
}

TEST(WriteFailureMessage, SaysTheFixedTextThenWhatAndWhyAndWhatToDo) {
  const Message message =
      WriteFailureMessage(ChangeOf({"PELORAQUOTAHARD", "peloraAdmin", "peloraResourceType", "cn"}),
                          NotDone(53, "not today"), kLabels);
  EXPECT_EQ(message.text,
            "Unknown error occured\r\n\r\nError code: 0X80072035\r\n\r\n"
            "Object: CN=Ada,DC=x\r\n"
            "Fields: Hard limit, Account type, cn\r\n"
            "The directory says: not today\r\n\r\n"
            "What you typed is kept here: apply again when the cause is gone.");
  EXPECT_EQ(message.caption, "Pelora Error");
  EXPECT_EQ(message.icon, MessageIcon::kError);
  EXPECT_EQ(message.buttons, MessageButtons::kOk);
}

TEST(WriteFailureMessage, ADirectoryWithoutWordsIsNotQuoted) {
  const Message message = WriteFailureMessage(ChangeOf({"cn"}), NotDone(80, ""), {});
  EXPECT_THAT(message.text, HasSubstr("Fields: cn\r\n\r\nWhat you typed"));
}

TEST(WriteFailureMessage, AConflictIsToldFieldByFieldAsAWarning) {
  const Result refused = changes::Refused(
      "CN=Ada,DC=x", {{"peloraQuotaHard", {"500"}, {"600"}, {"700"}}, {"cn", {}, {"b"}, {"c"}}});
  const Message message = WriteFailureMessage(ChangeOf({"peloraQuotaHard"}), refused, kLabels);
  EXPECT_EQ(message.text,
            "Somebody else has changed this object since it was read. Nothing of it was written."
            "\r\n\r\nObject: CN=Ada,DC=x\r\n"
            "Hard limit was 500 when it was read, is 700 now, and was to become 600.\r\n"
            "cn was not set when it was read, is c now, and was to become b.\r\n\r\n"
            "Apply again to write what you typed all the same, or cancel and open the properties "
            "anew to see what is there.");
  EXPECT_EQ(message.icon, MessageIcon::kWarning);
  EXPECT_EQ(message.caption, "Pelora Error");
}

TEST(WriteFailureMessage, WhatToDoDependsOnWhatWentWrong) {
  const auto advice = [](int code) { return AdviceOn(NotDone(code, "")); };
  EXPECT_THAT(advice(50), HasSubstr("may not change"));
  EXPECT_THAT(advice(32), HasSubstr("deleted or moved"));
  EXPECT_THAT(advice(-1), HasSubstr("connection is lost"));
  EXPECT_THAT(advice(51), HasSubstr("Another program"));
  EXPECT_THAT(advice(16), HasSubstr("pelora-deploy schema"));
  EXPECT_THAT(advice(17), HasSubstr("pelora-deploy schema"));
  EXPECT_THAT(advice(65), HasSubstr("pelora-deploy schema"));
  EXPECT_THAT(advice(19), StartsWith("Type another value"));
  EXPECT_THAT(advice(-5), HasSubstr("may have been done or not"));
}

}  // namespace
}  // namespace pelora::session
