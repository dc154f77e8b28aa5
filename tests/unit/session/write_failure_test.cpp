// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/write_failure.h"

#include <gmock/gmock.h>

#include "hosts/ldap/ldap_status.h"
#include "tests/support/memory_store.h"
#include "tests/support/observed_store.h"

namespace pelora::session {
namespace {

using changes::Change;
using changes::Outcome;
using changes::Result;
using ::testing::ContainsRegex;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr DirectoryPlace kServer = DirectoryPlace::kServer;
constexpr DirectoryPlace kFile = DirectoryPlace::kFile;

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
                          NotDone(53, "not today"), kLabels, kServer);
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
  const Message message = WriteFailureMessage(ChangeOf({"cn"}), NotDone(80, ""), {}, kServer);
  EXPECT_THAT(message.text, HasSubstr("Fields: cn\r\n\r\nWhat you typed"));
}

TEST(WriteFailureMessage, AConflictIsToldFieldByFieldAsAWarning) {
  const Result refused = changes::Refused(
      "CN=Ada,DC=x", {{"peloraQuotaHard", {"500"}, {"600"}, {"700"}}, {"cn", {}, {"b"}, {"c"}}});
  const Message message =
      WriteFailureMessage(ChangeOf({"peloraQuotaHard"}), refused, kLabels, kServer);
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
  const auto advice = [](int code) { return AdviceOn(NotDone(code, ""), kServer); };
  EXPECT_THAT(advice(50), HasSubstr("may not change"));
  EXPECT_THAT(advice(32), HasSubstr("deleted or moved"));
  EXPECT_THAT(advice(-1), HasSubstr("connection is lost"));
  EXPECT_THAT(advice(51), HasSubstr("server has too much to do"));
  EXPECT_THAT(advice(52), HasSubstr("server does not work"));
  EXPECT_THAT(advice(16), HasSubstr("pelora-deploy schema"));
  EXPECT_THAT(advice(17), HasSubstr("pelora-deploy schema"));
  EXPECT_THAT(advice(65), HasSubstr("pelora-deploy schema"));
  EXPECT_THAT(advice(19), StartsWith("Type another value"));
  EXPECT_THAT(advice(-5), HasSubstr("may have been done or not"));
}

TEST(WriteFailureMessage, WhatToDoDependsOnWhereTheDirectoryIs) {
  const auto advice = [](int code) { return AdviceOn(NotDone(code, ""), kFile); };
  EXPECT_THAT(advice(52), HasSubstr("note what you typed and start the program anew"));
  EXPECT_THAT(advice(51), HasSubstr("Another program"));
  EXPECT_THAT(advice(50), HasSubstr("may not change"));
  EXPECT_EQ(AdviceOnReading(ldap::HresultOfLdap(52), kServer),
            "Try again when the directory can be reached.");
  EXPECT_THAT(AdviceOnReading(ldap::HresultOfLdap(52), kFile), HasSubstr("start the program anew"));
}

/// Nobody who works with a file is told of servers, and the other way round.
TEST(WriteFailureMessage, NothingOfAServerIsSaidOfAFile) {
  for (const ldap::LdapStatus& row : ldap::kLdapStatusTable) {
    if (row.status == S_OK) continue;
    SCOPED_TRACE(row.name);
    const Result failed = NotDone(row.libldap_code, "");
    for (const std::string& told : {AdviceOn(failed, kFile), AdviceOnReading(row.status, kFile)}) {
      EXPECT_THAT(told, Not(ContainsRegex("server|connection|ticket|pelora-deploy")));
    }
    for (const std::string& told :
         {AdviceOn(failed, kServer), AdviceOnReading(row.status, kServer)}) {
      EXPECT_THAT(told, Not(ContainsRegex("[Ff]ile|Another program")));
    }
  }
}

TEST(WriteFailureMessage, WhereADirectoryIsIsSaidByItsStore) {
  testing::MemoryStore file;
  testing::ObservedStore store(file);
  EXPECT_EQ(PlaceOf(store), kFile);
  store.is_sealed = true;
  EXPECT_EQ(PlaceOf(store), kServer);
}

}  // namespace
}  // namespace pelora::session
