// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/change_history.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <fstream>

#include "hosts/changes/change_writer.h"
#include "hosts/session/noted_additions.h"
#include "tests/support/sample_file.h"

namespace pelora::session {
namespace {

using changes::Change;
using changes::Outcome;
using changes::Result;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr const char* kBirgit =
    "CN=Birgit Krämer,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
constexpr const char* kRolf =
    "CN=Rolf Uhlig,OU=Labor I/O,OU=Entwicklung,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";

class ChangeHistoryTest : public ::testing::Test {
 protected:
  /// Hides objects, as a sheet does, at a time.
  void Hide(const std::vector<const char*>& names,
            ChangeHistory::Clock::time_point when = ChangeHistory::Clock::now()) {
    const auto log = history().Begin({"Birgit", "Rolf"}, {"Hide from addressbook"}, when);
    ASSERT_NE(log, nullptr) << history().failure();
    changes::ChangeWriter writer(store(), log.get());
    for (const char* name : names) {
      const Result result = writer.Write(
          {.dn = name, .attributes = {{.attribute = "peloraHidden", .seen = {}, .wanted = {"1"}}}});
      EXPECT_EQ(result.outcome, Outcome::kChanged) << result.message;
    }
  }
  void Set(const char* name, const std::string& value) {
    const std::vector<ldap::Modification> change = {
        {ldap::Modification::Operation::kReplace, "peloraHidden", {value}}};
    EXPECT_TRUE(store().Modify(name, change).Ok());
  }
  [[nodiscard]] std::string Hidden(const char* name) {
    ldap::Entry entry;
    const std::vector<std::string> wanted = {"peloraHidden"};
    EXPECT_TRUE(store().Read(name, wanted, entry).Ok());
    const auto found = entry.attributes.find("peloraHidden");
    return found == entry.attributes.end() ? "" : found->second.front();
  }
  [[nodiscard]] std::vector<Outcome> Undo(const std::string& id) {
    return Outcomes(history().Undo(id, store(), errands_));
  }
  [[nodiscard]] std::vector<Outcome> Redo(const std::string& id) {
    return Outcomes(history().Redo(id, store(), errands_));
  }
  [[nodiscard]] ChangeHistory& history() { return history_; }
  [[nodiscard]] ldap::IDirectoryStore& store() { return sample_.store(); }

 private:
  static std::vector<Outcome> Outcomes(const std::vector<Result>& results) {
    std::vector<Outcome> outcomes;
    for (const Result& result : results) outcomes.push_back(result.outcome);
    return outcomes;
  }

  pelora::testing::SampleStore sample_;
  ChangeHistory history_{sample_.file().File("changes"), "/a dir/company.ldb", store().schema()};
  ErrandsAtOnce errands_;
};

TEST_F(ChangeHistoryTest, WhatWasWrittenIsListedTakenBackAndDoneAgain) {
  Hide({kBirgit, kRolf});
  const auto list = history().List();
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_THAT(list.front().objects, ElementsAre("Birgit", "Rolf"));
  EXPECT_THAT(list.front().fields, ElementsAre("Hide from addressbook"));
  EXPECT_FALSE(list.front().is_undone);
  const std::string id = list.front().id;
  EXPECT_THAT(Undo(id), ElementsAre(Outcome::kChanged, Outcome::kChanged));
  EXPECT_EQ(Hidden(kBirgit) + Hidden(kRolf), "");
  EXPECT_TRUE(history().List().front().is_undone);
  EXPECT_THAT(Redo(id), ElementsAre(Outcome::kChanged, Outcome::kChanged));
  EXPECT_EQ(Hidden(kBirgit) + Hidden(kRolf), "11");
  EXPECT_FALSE(history().List().front().is_undone);
  EXPECT_THAT(Undo(id), ElementsAre(Outcome::kChanged, Outcome::kChanged)) << "and once more";
  EXPECT_EQ(Hidden(kBirgit) + Hidden(kRolf), "");
}

TEST_F(ChangeHistoryTest, WhatSomebodyHasChangedSinceIsLeftAlone) {
  Hide({kBirgit, kRolf});
  Set(kBirgit, "0");
  const std::string id = history().List().front().id;
  EXPECT_THAT(Undo(id), ElementsAre(Outcome::kChanged, Outcome::kRefused)) << "latest first";
  EXPECT_EQ(Hidden(kBirgit), "0");
  EXPECT_EQ(Hidden(kRolf), "");
  // What stood in the way is gone: the rest is taken back, and all of it can be done again.
  Set(kBirgit, "1");
  EXPECT_THAT(Undo(id), ElementsAre(Outcome::kUnchanged, Outcome::kChanged));
  EXPECT_EQ(Hidden(kBirgit), "");
  EXPECT_THAT(Redo(id), ElementsAre(Outcome::kChanged, Outcome::kChanged));
  EXPECT_EQ(Hidden(kBirgit) + Hidden(kRolf), "11");
}

TEST_F(ChangeHistoryTest, AnUndoingThatDidNothingIsNone) {
  Hide({kBirgit});
  Set(kBirgit, "0");
  EXPECT_THAT(Undo(history().List().front().id), ElementsAre(Outcome::kRefused));
  EXPECT_FALSE(history().List().front().is_undone);
}

TEST_F(ChangeHistoryTest, AGoOfWhichNothingWasDoneLeavesNothingBehind) {
  ASSERT_NE(history().Begin({"Birgit"}, {}), nullptr);
  EXPECT_THAT(history().List(), IsEmpty());
  {
    const auto log = history().Begin({"Birgit"}, {});
    changes::IChangeLog::NoteId note = 0;
    const Change change{.dn = kBirgit,
                        .attributes = {{.attribute = "cn", .seen = {"a"}, .wanted = {"b"}}}};
    ASSERT_TRUE(log->Note({&change, 1}, note).Ok());
    log->Withdraw(note);
  }
  EXPECT_THAT(history().List(), IsEmpty());
  EXPECT_TRUE(std::filesystem::is_empty(history().folder()));
}

/// A contact in the sales department, made as a wizard makes it.
ldap::Entry NewContact() {
  return {.dn = "CN=Nora Neu,OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example",
          .attributes = {{"objectClass", {"contact"}},
                         {"cn", {"Nora Neu"}},
                         {"peloraAccount", {"1"}},
                         {"mail", {"nora@linden-werke.example"}}}};
}

TEST_F(ChangeHistoryTest, ACreationIsTakenBackAsLongAsTheObjectIsAsItWasMade) {
  const ldap::Entry made = NewContact();
  NotedAdditions additions(store(), history());
  ASSERT_TRUE(additions.Add(made).Ok());
  ASSERT_THAT(history().List(), SizeIs(1));
  const PastChange past = history().List().front();
  EXPECT_THAT(past.objects, ElementsAre("Nora Neu"));
  EXPECT_THAT(past.fields, ElementsAre("created"));
  Set(made.dn.c_str(), "1");
  EXPECT_THAT(Undo(past.id), ElementsAre(Outcome::kRefused)) << "somebody has changed it since";
  EXPECT_EQ(Hidden(made.dn.c_str()), "1");
  const std::vector<ldap::Modification> back = {
      {ldap::Modification::Operation::kReplace, "peloraHidden", {}}};
  ASSERT_TRUE(store().Modify(made.dn, back).Ok());
  EXPECT_THAT(Undo(past.id), ElementsAre(Outcome::kChanged));
  ldap::Entry gone;
  EXPECT_EQ(store().Read(made.dn, {}, gone).code, 32);
  EXPECT_THAT(Redo(past.id), ElementsAre(Outcome::kRefused)) << "nothing is kept of it";
  EXPECT_TRUE(history().List().front().is_undone);
}

TEST_F(ChangeHistoryTest, ACreationThatFailedIsNone) {
  ldap::Entry made = NewContact();
  made.dn = "CN=Nora Neu,OU=Nowhere,DC=linden-werke,DC=example";
  NotedAdditions additions(store(), history());
  EXPECT_FALSE(additions.Add(made).Ok());
  EXPECT_THAT(history().List(), IsEmpty());
}

TEST_F(ChangeHistoryTest, ItIsForItsOwnerAlone) {
  Hide({kBirgit});
  struct stat found {};
  ASSERT_EQ(stat(history().folder().c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777U, 0700U);
  for (const auto& entry : std::filesystem::directory_iterator(history().folder())) {
    ASSERT_EQ(stat(entry.path().c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0600U) << entry.path();
  }
}

TEST_F(ChangeHistoryTest, YesterdaysIsThereAndWhatIsOlderThanThirtyDaysGoes) {
  const auto now = ChangeHistory::Clock::now();
  Hide({kBirgit}, now - std::chrono::days(31));
  Hide({kRolf}, now - std::chrono::days(29));
  Set(kBirgit, "0");
  const auto list = history().List(now);
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_THAT(Undo(list.front().id), ElementsAre(Outcome::kChanged));
  EXPECT_EQ(Hidden(kRolf), "");
}

TEST_F(ChangeHistoryTest, TheLatestStandsFirstWithinOneSecondToo) {
  const auto now = ChangeHistory::Clock::now();
  Hide({kBirgit}, now);
  Hide({kRolf}, now);
  ASSERT_THAT(history().List(), SizeIs(2));
  EXPECT_THAT(Undo(history().List().front().id), ElementsAre(Outcome::kChanged));
  EXPECT_EQ(Hidden(kRolf), "");
  EXPECT_EQ(Hidden(kBirgit), "1");
}

TEST_F(ChangeHistoryTest, AFolderThatCannotBeMadeIsSaid) {
  ChangeHistory nowhere("/proc/nowhere", "x", store().schema());
  EXPECT_EQ(nowhere.Begin({}, {}), nullptr);
  EXPECT_NE(nowhere.failure(), "");
  EXPECT_THAT(nowhere.List(), IsEmpty());
}

}  // namespace
}  // namespace pelora::session
