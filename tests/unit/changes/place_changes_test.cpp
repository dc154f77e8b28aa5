// SPDX-License-Identifier: Apache-2.0
// Objects that are renamed, moved, deleted and brought back: the changes, written and read.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "hosts/changes/change_writer.h"
#include "hosts/changes/ldif_changes.h"
#include "hosts/changes/undo_file.h"
#include "hosts/ldap/ldap_status.h"
#include "tests/support/memory_store.h"
#include "tests/support/temporary_folder.h"

namespace pelora::changes {
namespace {

using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Kind = Change::Kind;

const std::string kBase = pelora::testing::MemoryStore::kBase;
const std::string kAda = "CN=Ada," + kBase;
const std::string kEva = "CN=Eva," + kBase;
const std::string kNumber("0123456789abcde\xFF", 16);

ValueChange Seen(const std::string& name) { return {.attribute = name, .seen = {kNumber}}; }

Change Renaming(const std::string& dn, const std::string& new_dn) {
  return {.kind = Kind::kRename,
          .dn = dn,
          .attributes = {{.attribute = "sAMAccountName", .seen = {"ada"}}},
          .new_dn = new_dn};
}

class PlaceChangesTest : public ::testing::Test {
 protected:
  PlaceChangesTest() {
    store_.Place({.dn = kBase, .attributes = {}});
    store_.Place({.dn = kAda, .attributes = {{"sAMAccountName", {"ada"}}}});
  }
  [[nodiscard]] Outcome Write(const Change& change, IChangeLog* log = nullptr) {
    result_ = ChangeWriter(store_, log).Write(change);
    return result_.outcome;
  }
  [[nodiscard]] Outcome Rehearse(const Change& change) {
    result_ = ChangeWriter(store_).Rehearse(change);
    return result_.outcome;
  }
  [[nodiscard]] bool IsThere(const std::string& dn) { return !store_.Stored(dn).empty(); }

  pelora::testing::MemoryStore store_;
  Result result_;
};

TEST_F(PlaceChangesTest, ANewNameIsGivenOnceAndTakenBack) {
  const Change change = Renaming(kAda, kEva);
  EXPECT_EQ(Rehearse(change), Outcome::kChanged);
  EXPECT_TRUE(IsThere(kAda));
  EXPECT_EQ(Write(change), Outcome::kChanged) << result_.message;
  EXPECT_TRUE(IsThere(kEva));
  EXPECT_EQ(Write(change), Outcome::kUnchanged) << "somebody has done it already";
  EXPECT_EQ(Write(UndoOf(change)), Outcome::kChanged);
  EXPECT_TRUE(IsThere(kAda));
}

TEST_F(PlaceChangesTest, AnotherObjectOfTheNameIsLeftAlone) {
  store_.Place({.dn = kAda, .attributes = {{"sAMAccountName", {"another"}}}});
  for (Change change :
       {Renaming(kAda, kEva),
        Change{.kind = Kind::kRemove, .dn = kAda, .attributes = Renaming(kAda, kEva).attributes}}) {
    EXPECT_EQ(Rehearse(change), Outcome::kRefused);
    EXPECT_EQ(Write(change), Outcome::kRefused);
    EXPECT_EQ(result_.message, "the object of this name is not the one that was seen");
  }
  EXPECT_TRUE(IsThere(kAda));
}

TEST_F(PlaceChangesTest, ANameThatIsTakenIsAFailure) {
  store_.Place({.dn = kEva, .attributes = {{"sAMAccountName", {"eva"}}}});
  EXPECT_EQ(Rehearse(Renaming(kAda, kEva)), Outcome::kFailed);
  EXPECT_EQ(Write(Renaming(kAda, kEva)), Outcome::kFailed);
  EXPECT_EQ(result_.code, ldap::HresultOfLdap(ldap::kLdapAlreadyExists));
}

TEST_F(PlaceChangesTest, WhatIsGoneIsAsWanted) {
  Change change{.kind = Kind::kRemove, .dn = kAda, .attributes = {}};
  change.attributes = Renaming(kAda, kEva).attributes;
  EXPECT_EQ(Write(change), Outcome::kChanged);
  EXPECT_FALSE(IsThere(kAda));
  EXPECT_EQ(Write(change), Outcome::kUnchanged);
  EXPECT_EQ(Rehearse(change), Outcome::kUnchanged);
}

TEST_F(PlaceChangesTest, OnlyWhatIsKeptCanBeTakenBack) {
  Change change{.kind = Kind::kRemove, .dn = kAda, .attributes = {Seen("objectGUID")}};
  EXPECT_FALSE(CanBeTakenBack(change));
  EXPECT_EQ(UndoOf(change).kind, Kind::kModify);
  EXPECT_THAT(UndoOf(change).attributes, IsEmpty());
  change.is_kept = true;
  change.below = {{.dn = "CN=Low," + kAda, .attributes = {{"objectGUID", {kNumber}}}}};
  const std::vector<Change> undos = UndosOf(change);
  ASSERT_THAT(undos, SizeIs(2));
  EXPECT_EQ(undos[0].dn, "CN=Low," + kAda);
  EXPECT_EQ(undos[1].dn, kAda) << "done last first, what is above comes back first";
  for (const Change& undo : undos) {
    EXPECT_EQ(undo.kind, Kind::kRestore);
    EXPECT_EQ(undo.Find("objectGUID")->seen, ldap::AttributeValues{kNumber});
  }
  EXPECT_EQ(UndoOf(undos[1]).kind, Kind::kRemove) << "and it can be done again";
  EXPECT_TRUE(UndoOf(undos[1]).is_kept);
}

TEST_F(PlaceChangesTest, AnUndoFileTakesBackANewName) {
  const pelora::testing::TemporaryFolder folder;
  const std::string path = folder.File("undo.ldif");
  {
    std::unique_ptr<UndoFile> file;
    ASSERT_TRUE(UndoFile::Create(path, store_.schema(), file).Ok());
    EXPECT_EQ(Write(Renaming(kAda, kEva), file.get()), Outcome::kChanged);
    EXPECT_EQ(Write(Renaming(kAda, "CN=Other," + kBase), file.get()), Outcome::kFailed);
  }
  std::vector<Change> undo;
  const ldap::StoreStatus read = ReadUndoFile(path, store_.schema(), undo);
  ASSERT_TRUE(read.Ok()) << read.text;
  ASSERT_THAT(undo, SizeIs(1)) << "what failed is withdrawn";
  EXPECT_EQ(Write(undo.front()), Outcome::kChanged) << result_.message;
  EXPECT_TRUE(IsThere(kAda));
}

/// What a text is read as, and written again.
std::string ReadAndWritten(const ldap::Schema& schema, const std::string& text) {
  std::vector<Change> changes;
  const ldap::StoreStatus status = ReadChanges(schema, text, changes);
  if (!status.Ok()) return status.text;
  std::string again;
  for (const Change& change : changes) again += ToLdif(schema, change);
  return again;
}

TEST_F(PlaceChangesTest, LdifSaysWhichObjectIsMeant) {
  const std::string renaming = ToLdif(store_.schema(), Renaming(kAda, "CN=Eva\\, B.,OU=x,DC=y"));
  EXPECT_EQ(renaming, "dn: " + kAda +
                          "\n"
                          "changetype: modrdn\n"
                          "# only if sAMAccountName:: YWRh\n"
                          "newrdn: CN=Eva\\, B.\n"
                          "deleteoldrdn: 1\n"
                          "newsuperior: OU=x,DC=y\n"
                          "\n");
  const std::string removal = ToLdif(store_.schema(), {.kind = Kind::kRemove,
                                                       .dn = kAda,
                                                       .attributes = {Seen("objectGUID")},
                                                       .with_all_below = true});
  EXPECT_EQ(removal, "dn: " + kAda +
                         "\n"
                         "control: 1.2.840.113556.1.4.805 true\n"
                         "changetype: delete\n"
                         "# only if objectGUID:: MDEyMzQ1Njc4OWFiY2Rl/w==\n"
                         "\n");
  const std::string restoring = ToLdif(
      store_.schema(), {.kind = Kind::kRestore, .dn = kAda, .attributes = {Seen("objectGUID")}});
  EXPECT_THAT(restoring,
              HasSubstr("dn: CN=Ada\\0ADEL:33323130-3534-3736-3839-6162636465ff,CN=Deleted "));
  EXPECT_THAT(restoring, HasSubstr("control: 1.2.840.113556.1.4.417 true\n"
                                   "changetype: modify\n"
                                   "delete: isDeleted\n"
                                   "-\n"
                                   "replace: distinguishedName\n"
                                   "distinguishedName: " +
                                   kAda + "\n-\n"));
  for (const std::string& text :
       {renaming, removal, restoring, ToLdif(store_.schema(), Renaming(kAda, kEva)),
        ToLdif(store_.schema(),
               {.kind = Kind::kRemove, .dn = kAda, .attributes = {Seen("objectGUID")}})}) {
    EXPECT_EQ(ReadAndWritten(store_.schema(), text), text);
  }
}

TEST_F(PlaceChangesTest, WithoutItNothingIsRenamedOrDeletedWithAllBelow) {
  EXPECT_EQ(ReadAndWritten(store_.schema(),
                           "dn: CN=a\nchangetype: modrdn\nnewrdn: CN=b\ndeleteoldrdn: 1\n"),
            "line 1: a change that does not say which object it means");
  EXPECT_EQ(ReadAndWritten(store_.schema(),
                           "dn: CN=a\ncontrol: 1.2.840.113556.1.4.805 true\nchangetype: delete\n"),
            "line 1: a change that does not say which object it means");
  for (const char* text :
       {"dn: CN=a\nchangetype: modrdn\n# only if x:: YQ==\nnewrdn: CN=b\ndeleteoldrdn: 0\n",
        "dn: CN=a\nchangetype: modrdn\n# only if x:: YQ==\ndeleteoldrdn: 1\n",
        "dn: CN=a\nchangetype: modrdn\n# only if x:: YQ==\nnewrdn: ,CN=b\ndeleteoldrdn: 1\n",
        "dn: ,CN=a\nchangetype: modrdn\n# only if x:: YQ==\nnewrdn: CN=b\ndeleteoldrdn: 1\n",
        "dn: CN=a\ncontrol: 1.2.840.113556.1.4.417 true\nchangetype: modify\ndelete: isDeleted\n-\n"
        "replace: distinguishedName\ndistinguishedName: CN=b\n-\n"}) {
    EXPECT_EQ(ReadAndWritten(store_.schema(), text),
              "line 1: the record that begins here is no LDIF")
        << text;
  }
  EXPECT_EQ(ReadAndWritten(store_.schema(), "dn: CN=a\ncontrol: 1.2.3 true\nchangetype: delete\n"),
            "line 1: a control that is not understood");
}

}  // namespace
}  // namespace pelora::changes
