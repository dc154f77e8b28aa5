// SPDX-License-Identifier: Apache-2.0
// Objects of a domain that are renamed, moved and deleted, and what its recycle bin is good for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "hosts/changes/change_writer.h"
#include "hosts/changes/ldif_changes.h"
#include "hosts/ldap/guid_name.h"
#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/object_name.h"
#include "hosts/ldap/remove_bottom_up.h"
#include "hosts/session/life/place_plan.h"
#include "hosts/session/life/recycle_bin.h"
#include "hosts/session/life/write_plan.h"
#include "tests/lab/lab_test.h"
#include "tests/support/temporary_folder.h"

namespace pelora::lab {
namespace {

using changes::ChangeWriter;
using changes::Outcome;
using session::PlacePlan;
using session::ReferringAttribute;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kRecycleBin = "766ddcd8-acd0-445e-f3b9-a7f9b6744f2a";

class PlacesTest : public ::testing::Test {
 protected:
  PlacesTest() {
    static int number = 0;
    const std::string mark = std::to_string(++number);
    container_ = "OU=Places " + mark + ",OU=Contract," + Base();
    unit_ = "OU=Unit," + container_;
    other_ = "OU=Other\\, far," + container_;
    for (const std::string& dn : {container_, unit_, other_}) {
      administrator_.Add(dn, {{"objectClass", {"organizationalUnit"}}});
    }
    administrator_.Add(user_ = "CN=Jürgen Weiß\\, Dr.," + unit_,
                       {{"objectClass", {"user"}},
                        {"sAMAccountName", {"juergen" + mark}},
                        {"displayName", {"Jürgen"}},
                        {"peloraQuotaHard", {"100"}}});
    administrator_.Add(contact_ = "CN=Contact," + unit_,
                       {{"objectClass", {"contact"}}, {"peloraSendAsPrivilege", {user_}}});
    administrator_.Add(group_ = "CN=Group " + mark + "," + container_,
                       {{"objectClass", {"group"}}, {"member", {user_}}});
    administrator_.Add(holder_ = "CN=Holder," + container_,
                       {{"objectClass", {"contact"}}, {"peloraSendAsPrivilege", {user_}}});
  }

  [[nodiscard]] ldap::IDirectoryStore& store() { return session_->store(); }
  [[nodiscard]] bool IsThere(const std::string& dn) {
    return ReadValue(store(), dn, "objectClass") == "top";
  }
  void Check(const StoreStatus& status) { EXPECT_TRUE(status.Ok()) << status.text; }
  [[nodiscard]] std::vector<Outcome> Write() { return OutcomesOf(Run()); }
  std::vector<changes::Result> Run() {
    return session::WritePlan(store(), plan_, &history_, errands_);
  }
  [[nodiscard]] std::vector<Outcome> OutcomesOf(const std::vector<changes::Result>& results) {
    std::vector<Outcome> outcomes;
    for (const changes::Result& result : results) {
      outcomes.push_back(result.outcome);
      said_ += result.message + "\n";
    }
    return outcomes;
  }
  [[nodiscard]] std::vector<Outcome> Undo() {
    return OutcomesOf(history_.Undo(history_.List().front().id, store(), errands_));
  }
  [[nodiscard]] std::vector<Outcome> Redo() {
    return OutcomesOf(history_.Redo(history_.List().front().id, store(), errands_));
  }

  LabAdministrator administrator_;
  std::string container_;
  std::string unit_;
  std::string other_;
  std::string user_;
  std::string contact_;
  std::string group_;
  std::string holder_;
  std::string said_;
  pelora::testing::TemporaryFolder folder_;
  std::unique_ptr<NetworkSession> session_ = OpenSession();
  session::ChangeHistory history_{folder_.path(), "lab", session_->store().schema()};
  session::ErrandsAtOnce errands_;
  std::vector<ReferringAttribute> attributes_ = {
      {"member", "Members", ReferringAttribute::By::kName},
      {"peloraSendAsPrivilege", "Delegates", ReferringAttribute::By::kName},
      {"peloraBase", "Search base", ReferringAttribute::By::kTextOfName}};
  PlacePlan plan_;
};

TEST_F(PlacesTest, ANewNameIsGivenAndTakenBackAndNamesFollow) {
  Check(session::PlanRenaming(store(), user_, "Jürgen Weiss", attributes_, plan_));
  EXPECT_THAT(plan_.changes.front().attributes, SizeIs(1)) << "its objectGUID says everything";
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged}) << said_;
  const std::string renamed = "CN=Jürgen Weiss," + unit_;
  EXPECT_EQ(ReadValue(store(), renamed, "name"), "Jürgen Weiss");
  EXPECT_EQ(ReadValue(store(), renamed, "displayName"), "Jürgen");
  EXPECT_EQ(ReadValue(store(), group_, "member"), renamed);
  EXPECT_EQ(ReadValue(store(), holder_, "peloraSendAsPrivilege"), renamed);
  EXPECT_EQ(Write(), std::vector{Outcome::kUnchanged}) << "it is called so already";
  EXPECT_EQ(Undo(), std::vector{Outcome::kChanged}) << said_;
  EXPECT_EQ(ReadValue(store(), user_, "name"), "Jürgen Weiß, Dr.");
  EXPECT_EQ(Redo(), std::vector{Outcome::kChanged}) << said_;
  EXPECT_TRUE(IsThere(renamed));
}

TEST_F(PlacesTest, AUnitMovesWithAllThatLiesBelowAndBack) {
  Check(session::PlanMoving(store(), {unit_, user_}, other_, attributes_, plan_));
  ASSERT_THAT(plan_.changes, SizeIs(1));
  EXPECT_EQ(plan_.BelowCount(), 2U);
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged}) << said_;
  const std::string moved = ldap::MovedName(user_, ldap::MovedName(unit_, other_));
  EXPECT_TRUE(IsThere(moved));
  EXPECT_EQ(ReadValue(store(), holder_, "peloraSendAsPrivilege"), moved);
  EXPECT_EQ(Undo(), std::vector{Outcome::kChanged}) << said_;
  EXPECT_TRUE(IsThere(user_));
}

TEST_F(PlacesTest, WhatTheServerRefusesIsAFailureWithItsCode) {
  Check(session::PlanRenaming(store(), user_, "Contact", attributes_, plan_));
  const auto code = [this] {
    const auto results = Run();
    EXPECT_EQ(results.front().outcome, Outcome::kFailed);
    return results.front().code;
  };
  EXPECT_EQ(code(), ldap::HresultOfLdap(ldap::kLdapAlreadyExists));
  Check(session::PlanMoving(store(), {user_}, "OU=Nowhere," + container_, attributes_, plan_));
  EXPECT_EQ(code(), ldap::HresultOfLdap(ldap::kLdapNoSuchObject));
  Check(session::PlanRemoval(store(), {unit_}, attributes_, plan_));
  plan_.changes.front().with_all_below = false;
  EXPECT_EQ(code(), ldap::HresultOfLdap(ldap::kLdapNotAllowedOnNonLeaf));
  EXPECT_THAT(history_.List(), IsEmpty());
  // Whoever may write nothing may not do this either.
  const EnvironmentVariable tickets("KRB5CCNAME", TicketsOf(kHelper));
  session_ = OpenSession();
  Check(session::PlanRenaming(store(), user_, "Other", attributes_, plan_));
  EXPECT_EQ(code(), E_ACCESSDENIED);
  Check(session::PlanRemoval(store(), {unit_}, attributes_, plan_));
  EXPECT_EQ(code(), E_ACCESSDENIED);
  EXPECT_TRUE(IsThere(user_));
}

TEST_F(PlacesTest, AnotherObjectOfTheNameIsLeftAlone) {
  Check(session::PlanRemoval(store(), {contact_}, attributes_, plan_));
  administrator_.Remove(contact_);
  administrator_.Add(contact_, {{"objectClass", {"contact"}}});
  EXPECT_EQ(Write(), std::vector{Outcome::kRefused});
  EXPECT_TRUE(IsThere(contact_));
}

TEST_F(PlacesTest, AUnitGoesInOneRequestAndWhatRefersToItIsSaidBefore) {
  Check(session::PlanRemoval(store(), {unit_}, attributes_, plan_));
  std::vector<std::string> holders;
  for (const auto& reference : plan_.references) holders.push_back(reference.holder_dn);
  EXPECT_THAT(holders, ElementsAre(group_, holder_)) << "and not the contact, which goes itself";
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged}) << said_;
  EXPECT_FALSE(IsThere(unit_));
  EXPECT_FALSE(IsThere(user_));
  EXPECT_EQ(ReadValue(store(), group_, "member"), "none");
}

TEST_F(PlacesTest, AServerWithoutTreeDeletionIsHelpedFromTheBottomUp) {
  const auto search = [this](const ldap::SearchRequest& request, const ldap::EntrySink& sink) {
    return store().Search(request, sink);
  };
  Check(ldap::RemoveBottomUp(container_, search, [this](const std::string& dn) {
    return store().Remove({.dn = dn, .attributes = {}}, ldap::IDirectoryStore::Extent::kAlone);
  }));
  EXPECT_FALSE(IsThere(container_));
}

TEST_F(PlacesTest, LdapmodifyGivesTheNameToo) {
  Check(session::PlanMoving(store(), {user_}, other_, attributes_, plan_));
  std::ofstream(folder_.File("move.ldif")) << ToLdif(store().schema(), plan_.changes.front());
  (void)OutputOf("ldapmodify -N -Q -Y GSSAPI -H ldap://" + Server() + " -f '" +
                 folder_.File("move.ldif") + "'");
  EXPECT_TRUE(IsThere(ldap::MovedName(user_, other_)));
}

/// The last: a recycle bin is never switched off again.
class RecycleBinTest : public PlacesTest {};

TEST_F(RecycleBinTest, SambaGivesNothingBackSoThatADeletionIsForGood) {
  // The server itself has to do it: it takes this over no connection.
  std::ofstream(folder_.File("bin.ldif"))
      << "dn:\nchangetype: modify\nadd: enableOptionalFeature\nenableOptionalFeature: "
      << "CN=Partitions,CN=Configuration," << Base() << ":" << kRecycleBin << "\n-\n";
  (void)OutputOf("ldbmodify -H " + Home() + "/domain/private/sam.ldb '" + folder_.File("bin.ldif") +
                 "'");
  EXPECT_THAT(LdapSearch("CN=Partitions,CN=Configuration," + Base(), {"msDS-EnabledFeature"}),
              ElementsAre(HasSubstr("CN=Recycle Bin Feature,")));
  bool keeps = true;
  Check(session::ReadKeepsDeleted(store(), keeps));
  EXPECT_FALSE(keeps);
  Check(session::PlanRemoval(store(), {contact_}, attributes_, plan_));
  const auto& seen = plan_.changes.front().attributes;
  const ldap::Entry removed{.dn = contact_, .attributes = {{"objectGUID", seen.front().seen}}};
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged}) << said_;
  EXPECT_TRUE(history_.List().front().is_final);
  const StoreStatus restored = store().Restore(removed);
  EXPECT_FALSE(restored.Ok()) << "once it does, what is said of it has to be another";
  EXPECT_NE(restored.text, "");
  EXPECT_FALSE(IsThere(contact_));
}

}  // namespace
}  // namespace pelora::lab
