// SPDX-License-Identifier: Apache-2.0
// What comes with a new name, a new place or a deletion, and what is asked before.
#include "hosts/session/life/place_plan.h"

#include <gmock/gmock.h>

#include "hosts/ldap/ldap_status.h"
#include "hosts/ldap/object_name.h"
#include "hosts/session/life/place_words.h"
#include "hosts/session/life/recycle_bin.h"
#include "hosts/session/life/write_plan.h"
#include "tests/support/observed_store.h"
#include "tests/support/temporary_folder.h"
#include "tests/unit/find/find_bench.h"
#include "tests/unit/store_scripted.h"

namespace pelora::session {
namespace {

using changes::Outcome;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ContainsRegex;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

const std::string kTop = "DC=linden-werke,DC=example";
const std::string kCompany = "OU=Linden-Werke Chemnitz," + kTop;
const std::string kHelga = "CN=Helga Önder,OU=IT," + kCompany;
const std::string kWorks = "OU=Fertigung," + kCompany;
const std::string kRooms = "OU=Räume und Geräte," + kCompany;

class PlacePlanTest : public FindBench {
 protected:
  [[nodiscard]] const PlacePlan& Removal(const std::vector<std::string>& dns) {
    return Checked(PlanRemoval(store(), dns, attributes_, plan_));
  }
  [[nodiscard]] const PlacePlan& Moving(const std::vector<std::string>& dns,
                                        const std::string& container) {
    return Checked(PlanMoving(store(), dns, container, attributes_, plan_));
  }
  [[nodiscard]] const PlacePlan& Renaming(const std::string& dn, const std::string& name) {
    return Checked(PlanRenaming(store(), dn, name, attributes_, plan_));
  }
  /// Writes the plan that was made last.
  [[nodiscard]] std::vector<Outcome> Write() {
    results_ = WritePlan(store(), plan_, &history_, errands_);
    std::vector<Outcome> outcomes;
    for (const changes::Result& result : results_) outcomes.push_back(result.outcome);
    return outcomes;
  }
  [[nodiscard]] std::vector<std::string> References() const {
    std::vector<std::string> texts;
    for (const Reference& reference : plan_.references) {
      texts.push_back(reference.holder + ": " + reference.field);
    }
    return texts;
  }
  [[nodiscard]] bool IsThere(const std::string& dn) {
    ldap::Entry entry;
    return store().Read(dn, {}, entry).Ok();
  }

  const PlacePlan& Checked(const ldap::StoreStatus& status) {
    EXPECT_TRUE(status.Ok()) << status.text;
    return plan_;
  }

  pelora::testing::TemporaryFolder folder_;
  ChangeHistory history_{folder_.path(), "company", store().schema()};
  ErrandsAtOnce errands_;
  std::vector<ReferringAttribute> attributes_ = ReferringAttributes(catalogue(), store().schema());
  PlacePlan plan_;
  std::vector<changes::Result> results_;
};

TEST_F(PlacePlanTest, TheRowsAndTheSchemaSayWhatRefersToObjects) {
  std::vector<std::string> names;
  std::vector<std::string> texts;
  std::vector<std::string> servers;
  for (const ReferringAttribute& row : attributes_) {
    (row.by == ReferringAttribute::By::kName         ? names
     : row.by == ReferringAttribute::By::kTextOfName ? texts
                                                     : servers)
        .push_back(row.attribute);
    EXPECT_NE(row.label, "");
  }
  EXPECT_THAT(names,
              UnorderedElementsAre("member", "peloraSendAsPrivilege", "peloraViewPrivilege",
                                   "peloraAdminPrivilege", "peloraQuotaUserWarningRecipients",
                                   "peloraQuotaCompanyWarningRecipients"));
  EXPECT_THAT(texts, UnorderedElementsAre("peloraBase", "peloraSystemAdmin"));
  EXPECT_THAT(servers, UnorderedElementsAre("peloraUserServer", "peloraCompanyServer",
                                            "peloraUserArchiveServers"));
}

TEST_F(PlacePlanTest, ADeletionSaysWhoRefersToTheObject) {
  const PlacePlan& plan = Removal({kHelga});
  EXPECT_THAT(plan.names, ElementsAre("Helga Önder"));
  EXPECT_EQ(plan.BelowCount(), 0U);
  EXPECT_FALSE(plan.is_kept);
  EXPECT_THAT(References(), AllOf(Contains("Linden-Werke Chemnitz: Quota warning recipients"),
                                  Contains(HasSubstr("Linden-Werke Chemnitz: "))));
  EXPECT_THAT(plan.references, SizeIs(Ge(3U))) << "recipient of both kinds, and administrator";
  const PlaceQuestion question = AskOfRemoval(plan);
  EXPECT_EQ(question.text, "Delete Helga Önder?");
  EXPECT_EQ(question.to_type, "");
  EXPECT_THAT(question.notes, ElementsAre("This cannot be taken back: the directory keeps nothing "
                                          "of what is deleted."));
  EXPECT_THAT(question.about_references, HasSubstr("entries elsewhere name what is deleted:"));
}

TEST_F(PlacePlanTest, AUnitsDeletionCountsWhatGoesAndLeavesOutWhatRefersToItself) {
  const PlacePlan& plan = Removal({kCompany, kHelga, kWorks});
  EXPECT_THAT(plan.names, ElementsAre("Linden-Werke Chemnitz")) << "the others lie below it";
  EXPECT_THAT(plan.changes, SizeIs(1));
  EXPECT_TRUE(plan.changes.front().with_all_below);
  EXPECT_GT(plan.BelowCount(), 40U);
  const std::string counts = CountText(plan.below);
  EXPECT_THAT(counts, HasSubstr(" User"));
  EXPECT_THAT(counts, HasSubstr(" and "));
  for (const Reference& reference : plan.references) {
    EXPECT_THAT(reference.holder_dn, Not(HasSubstr(kCompany)));
  }
  EXPECT_THAT(References(), Contains(HasSubstr("Linden Optiki Thessaloniki: ")))
      << "who may look at it";
  EXPECT_EQ(AskOfRemoval(plan).to_type, "Linden-Werke Chemnitz");
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged});
  EXPECT_FALSE(IsThere(kWorks));
}

TEST_F(PlacePlanTest, AServersDeletionAndNewNameNameItsUsers) {
  const std::string server = "CN=mail-thess,OU=Groupware Servers," + kTop;
  (void)Removal({server});
  EXPECT_THAT(References(), SizeIs(7)) << "six users and a company";
  (void)Renaming(server, "mail-gr");
  EXPECT_THAT(References(), SizeIs(7));
  (void)Removal({"OU=Groupware Servers," + kTop});
  EXPECT_THAT(References(), SizeIs(Ge(40U))) << "the servers that go with their unit";
  (void)Moving({server}, kCompany);
  EXPECT_THAT(References(), IsEmpty()) << "it is called as before";
}

TEST_F(PlacePlanTest, AMoveNamesTheTextsThatStay) {
  const PlacePlan& plan = Moving({kRooms}, "OU=Linden Servis Beograd," + kTop);
  EXPECT_THAT(References(), UnorderedElementsAre(HasSubstr("Räume: "), HasSubstr("Geräte: ")));
  EXPECT_GT(plan.BelowCount(), 0U);
  const PlaceQuestion question = AskOfMoving(plan, "Linden Servis Beograd");
  EXPECT_EQ(question.text, "Move Räume und Geräte to Linden Servis Beograd?");
  EXPECT_THAT(question.notes, ElementsAre(HasSubstr("What lies below moves along, ")));
  EXPECT_THAT(question.about_references, HasSubstr("2 entries elsewhere name what will be called"));
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged});
  EXPECT_FALSE(IsThere(kRooms));
  // Taken back, it stands where it stood.
  const std::vector<PastChange> past = history_.List();
  ASSERT_THAT(past, SizeIs(1));
  EXPECT_THAT(past.front().fields, ElementsAre("Folder"));
  EXPECT_FALSE(past.front().is_final);
  EXPECT_THAT(history_.Undo(past.front().id, store(), errands_), SizeIs(1));
  EXPECT_TRUE(IsThere(kRooms));
}

TEST_F(PlacePlanTest, ANewNameIsTakenBackUnlessSomebodyGaveAnotherOne) {
  const std::string dn = "CN=Birgit Krämer,OU=Vertrieb," + kCompany;
  (void)Renaming(dn, "Birgit Kraemer");
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged});
  const std::string renamed = ldap::RenamedName(dn, "Birgit Kraemer");
  EXPECT_TRUE(IsThere(renamed));
  const std::string third = ldap::RenamedName(dn, "Birgit K.");
  ASSERT_TRUE(store().Rename({.dn = renamed, .attributes = {}}, third).Ok());
  const std::string id = history_.List().front().id;
  const std::vector<changes::Result> results = history_.Undo(id, store(), errands_);
  ASSERT_THAT(results, SizeIs(1));
  EXPECT_EQ(results.front().outcome, Outcome::kFailed);
  EXPECT_TRUE(IsThere(third)) << "left alone";
  EXPECT_THAT(PlaceReason(results.front(), PlaceOf(store())), HasSubstr("not there any more"));
}

TEST_F(PlacePlanTest, ADeletionForGoodIsListedAsSuch) {
  (void)Removal({kHelga});
  EXPECT_EQ(Write(), std::vector{Outcome::kChanged});
  const std::vector<PastChange> past = history_.List();
  ASSERT_THAT(past, SizeIs(1));
  EXPECT_TRUE(past.front().is_final);
  EXPECT_THAT(past.front().fields, ElementsAre("Deletion"));
  EXPECT_THAT(past.front().objects, ElementsAre("Helga Önder"));
}

TEST_F(PlacePlanTest, WhatIsNotDoneIsKeptForAnotherTry) {
  const std::string birgit = "CN=Birgit Krämer,OU=Vertrieb," + kCompany;
  const std::string heike = "CN=Heike Naumann," + kWorks;
  // Somebody makes another one of the name there.
  (void)Moving({heike, birgit}, "OU=IT," + kCompany);
  ASSERT_TRUE(store()
                  .Add({.dn = "CN=Heike Naumann,OU=IT," + kCompany,
                        .attributes = {{"objectClass", {"contact"}}}})
                  .Ok());
  EXPECT_EQ(Write(), (std::vector{Outcome::kFailed, Outcome::kChanged}));
  EXPECT_THAT(PlaceReason(results_.front(), PlaceOf(store())),
              HasSubstr("There is an object of this name already. (0X80071392)"));
  KeepWhatIsLeft(results_, plan_);
  EXPECT_THAT(plan_.names, ElementsAre("Heike Naumann"));
  const ShownFailure failure =
      PlaceFailure("Heike Naumann", "moved", results_.front(), PlaceOf(store()));
  EXPECT_EQ(failure.summary, "Heike Naumann was not moved.");
  EXPECT_THAT(failure.details, HasSubstr("Object: " + heike));
}

TEST(PlaceReasonTest, NothingOfAServerIsSaidOfAFile) {
  for (const ldap::LdapStatus& row : ldap::kLdapStatusTable) {
    if (row.status == S_OK) continue;
    SCOPED_TRACE(row.name);
    const changes::Result failed = changes::NotDone("CN=x", {row.libldap_code, ""});
    EXPECT_THAT(PlaceReason(failed, DirectoryPlace::kFile),
                Not(ContainsRegex("server|connection|ticket")));
    EXPECT_THAT(PlaceReason(failed, DirectoryPlace::kServer),
                Not(ContainsRegex("[Ff]ile|Another program")));
  }
  const changes::Result stuck = changes::NotDone("CN=x", {ldap::kLdapUnavailable, ""});
  EXPECT_THAT(PlaceReason(stuck, DirectoryPlace::kFile), HasSubstr("start the program anew"));
}

TEST_F(PlacePlanTest, WhatLiesInTheContainerAlreadyIsNotMoved) {
  EXPECT_THAT(Moving({kWorks}, "ou=linden-werke chemnitz, " + kTop).changes, IsEmpty());
}

TEST_F(PlacePlanTest, OneSearchForEachAttributeFindsWhatRefers) {
  pelora::testing::ObservedStore observed(store());
  std::vector<Reference> found;
  EXPECT_TRUE(FindReferences(observed, attributes_,
                             {.objects = {kHelga, kWorks}, .with_all_below = true},
                             [&found](Reference reference) {
                               found.push_back(std::move(reference));
                               return true;
                             })
                  .Ok());
  EXPECT_THAT(observed.log, SizeIs(1 + 8)) << "the root, and each attribute of names";
  EXPECT_THAT(found, Not(IsEmpty()));
}

TEST(PlaceWords, OneReferenceIsOne) {
  const PlacePlan plan{
      .names = {"Ada"},
      .references = {
          {.holder_dn = "CN=All", .holder = "All", .field = "Members", .target = "CN=Ada"}}};
  EXPECT_EQ(AskOfRemoval(plan).about_references, "1 entry elsewhere names what is deleted:");
  EXPECT_EQ(
      AskOfRenaming(plan, "Ida").about_references,
      "1 entry elsewhere names what will be called otherwise. It stays as it is, and has to be "
      "changed by hand:");
}

TEST(RecycleBin, IsOnWhereTheDomainSaysSoAndGivesBack) {
  ldap::ScriptedStore store;
  bool keeps = true;
  EXPECT_TRUE(ReadKeepsDeleted(store, keeps).Ok());
  EXPECT_FALSE(keeps) << "a file has no such context";
  store.root.attributes["configurationNamingContext"] = {"CN=Configuration,DC=x"};
  store.entry = {.dn = "CN=Partitions,CN=Configuration,DC=x", .attributes = {}};
  EXPECT_TRUE(ReadKeepsDeleted(store, keeps).Ok());
  EXPECT_FALSE(keeps);
  store.entry.attributes["msDS-EnabledFeature"] = {
      "CN=Privileged Access Management Feature,CN=Optional Features,CN=Configuration,DC=x"};
  EXPECT_TRUE(ReadKeepsDeleted(store, keeps).Ok());
  EXPECT_FALSE(keeps) << "another feature";
  store.entry.attributes["msDS-EnabledFeature"] = {
      "CN=Privileged Access Management Feature,CN=Optional Features,CN=Configuration,DC=x",
      "CN=Recycle Bin Feature,CN=Optional Features,CN=Configuration,DC=x"};
  EXPECT_TRUE(ReadKeepsDeleted(store, keeps).Ok());
  EXPECT_TRUE(keeps);
  store.root.attributes["vendorName"] = {"Samba Team (https://www.samba.org)"};
  EXPECT_TRUE(ReadKeepsDeleted(store, keeps).Ok());
  EXPECT_FALSE(keeps);
}

}  // namespace
}  // namespace pelora::session
