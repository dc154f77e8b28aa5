// SPDX-License-Identifier: Apache-2.0
// A command on a selection, on a directory: planned, looked at, written, taken back.
#include "hosts/session/commands/selection_command.h"

#include <gmock/gmock.h>

#include <optional>

#include "hosts/headless/headless_message_box.h"
#include "hosts/session/directory_session.h"
#include "tests/support/fault_store.h"
#include "tests/support/sample_file.h"
#include "tests/support/temporary_folder.h"

namespace pelora::session {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Lines = std::vector<std::string>;

const std::string kUnit = ",OU=Vertrieb,OU=Linden-Werke Chemnitz,DC=linden-werke,DC=example";
const std::string kBirgit = "CN=Birgit Krämer" + kUnit;
const std::string kStefan = "CN=Stefan Ebert" + kUnit;

/// Looks at everything, writes it, and tries again once.
class Desk final : public IWritingDesk {
 public:
  Lines reviewed;
  Lines told;
  bool is_wanted = true;

  [[nodiscard]] bool ReviewsEverything() const override { return true; }
  [[nodiscard]] bool ShowReview(IDialog* /*owner*/, Review& review) override {
    for (const ReviewedChange& change : review.changes) {
      for (const ShownField& field : change.fields) {
        reviewed.push_back(change.name + "|" + field.attribute + "|" + field.before + "|" +
                           field.after);
      }
    }
    return is_wanted;
  }
  [[nodiscard]] bool ShowConflicts(IDialog* /*owner*/,
                                   std::vector<ShownConflict>& /*conflicts*/) override {
    return false;
  }
  [[nodiscard]] bool ShowResults(IDialog* /*owner*/,
                                 std::span<const WrittenChange> results) override {
    bool is_any_left = false;
    for (const WrittenChange& row : results) {
      told.push_back(row.name + ": " + std::string(changes::WordOf(row.result.outcome)));
      is_any_left = is_any_left || !row.result.IsDone();
    }
    return is_any_left;
  }
  void ShowFailure(IDialog* /*owner*/, const ShownFailure& failure) override {
    told.push_back(failure.summary);
  }
};

class SelectionCommandTest : public ::testing::Test {
 protected:
  SelectionCommandTest() {
    Set(kBirgit, "givenName", {"Birgit"});
    Set(kBirgit, "sn", {"Krämer"});
    Set(kStefan, "givenName", {"Stefan"});
    Set(kStefan, "sn", {"Ebert"});
  }

  void Set(const std::string& dn, const std::string& attribute, const Lines& values) {
    const std::vector<ldap::Modification> change = {{.attribute = attribute, .values = values}};
    ASSERT_TRUE(sample_.store().Modify(dn, change).Ok()) << attribute;
  }
  [[nodiscard]] Lines Get(const std::string& dn, const std::string& attribute) {
    ldap::Entry entry;
    const Lines wanted = {attribute};
    EXPECT_TRUE(sample_.store().Read(dn, wanted, entry).Ok());
    Lines values = entry.attributes[attribute];
    std::ranges::sort(values);
    return values;
  }
  SelectionCommand& On(const ValueCommand& command, const Lines& names) {
    std::vector<DirectoryObject> objects(names.size());
    const DirectoryBrowser browser(sample_.store());
    for (std::size_t at = 0; at < names.size(); ++at) {
      EXPECT_TRUE(browser.ReadObject(names[at], objects[at]).Ok());
    }
    command_.emplace(
        CommitSurroundings{
            .store = faulty_,
            .errands = errands_,
            .message_box = boxes_,
            .desk = &desk_,
            .history = &history_,
            .book = book_,
            .name_of = [](const std::string& dn) { return dn.substr(3, dn.find(',') - 3); }},
        objects, command.Attributes());
    EXPECT_TRUE(command_->Read().Ok());
    return *command_;
  }

  pelora::testing::SampleStore sample_;
  pelora::testing::FaultStore faulty_{sample_.store()};
  pelora::testing::TemporaryFolder folder_;
  ErrandsAtOnce errands_;
  HeadlessMessageBox boxes_;
  ChangeHistory history_{folder_.File("changes"), "x", sample_.store().schema()};
  FieldBook book_;
  Desk desk_;
  std::optional<SelectionCommand> command_;
};

ValueCommand Add(const char* pattern) {
  return {.kind = ValueCommand::Kind::kAddAddress, .address = AddressPattern(pattern)};
}

TEST_F(SelectionCommandTest, IsLookedAtWrittenToldAndCanBeTakenBack) {
  const Lines before = Get(kBirgit, "otherMailbox");
  const ValueCommand command = Add("{first}.{last}@linden-werke.example");
  SelectionCommand& on = On(command, {kBirgit, kStefan});
  const std::vector<PlannedObject> planned = on.PlanAll(command);
  EXPECT_EQ(PlanText(planned, false), "2 will be changed.");
  EXPECT_EQ(Get(kBirgit, "otherMailbox"), before) << "nothing is written before";
  EXPECT_TRUE(on.Write(planned, false));
  EXPECT_EQ(desk_.reviewed.size(), 2U);
  EXPECT_THAT(desk_.told, ElementsAre("Birgit Krämer: changed", "Stefan Ebert: changed"));
  EXPECT_THAT(Get(kBirgit, "otherMailbox"),
              ::testing::Contains("birgit.kraemer@linden-werke.example"));
  EXPECT_THAT(Get(kStefan, "otherMailbox"),
              ::testing::Contains("stefan.ebert@linden-werke.example"));
  ASSERT_EQ(history_.List().size(), 1U);
  EXPECT_EQ(history_.List().front().objects.size(), 2U);
  for (const changes::Result& result :
       history_.Undo(history_.List().front().id, sample_.store(), errands_)) {
    EXPECT_TRUE(result.IsDone()) << result.message;
  }
  EXPECT_EQ(Get(kBirgit, "otherMailbox"), before);
}

TEST_F(SelectionCommandTest, NothingIsWrittenThatNobodyWants) {
  const ValueCommand command = Add("{logon}@new.example");
  SelectionCommand& on = On(command, {kBirgit, kStefan});
  const Lines before = Get(kBirgit, "otherMailbox");
  desk_.is_wanted = false;
  EXPECT_FALSE(on.Write(on.PlanAll(command), false));
  EXPECT_EQ(Get(kBirgit, "otherMailbox"), before);
  EXPECT_THAT(history_.List(), IsEmpty());
}

TEST_F(SelectionCommandTest, WhatFailedIsTriedAgain) {
  const ValueCommand command = Add("{logon}@new.example");
  SelectionCommand& on = On(command, {kBirgit, kStefan});
  faulty_.FailChange(2, {50, "no right"});
  EXPECT_TRUE(on.Write(on.PlanAll(command), false));
  EXPECT_THAT(desk_.told, ElementsAre("Birgit Krämer: changed", "Stefan Ebert: failed",
                                      "Birgit Krämer: changed", "Stefan Ebert: changed"));
}

TEST_F(SelectionCommandTest, WhatOthersPutInMeanwhileStays) {
  const ValueCommand command = Add("{logon}@new.example");
  SelectionCommand& on = On(command, {kBirgit});
  const std::vector<PlannedObject> planned = on.PlanAll(command);
  Lines others = Get(kBirgit, "otherMailbox");
  others.emplace_back("meanwhile@linden-werke.example");
  Set(kBirgit, "otherMailbox", others);
  EXPECT_TRUE(on.Write(planned, false));
  EXPECT_THAT(Get(kBirgit, "otherMailbox"), ::testing::Contains("meanwhile@linden-werke.example"));
  EXPECT_EQ(Get(kBirgit, "otherMailbox").size(), others.size() + 1);
}

TEST_F(SelectionCommandTest, AnAddressThatSomebodyHasIsOddAndLeftOut) {
  Set(kStefan, "otherMailbox", {"birgit@linden-werke.example"});
  const ValueCommand command = Add("{first}@linden-werke.example");
  SelectionCommand& on = On(command, {kBirgit, kStefan});
  std::vector<PlannedObject> planned = on.PlanAll(command);
  on.TakeOwners(FindAddressOwners(sample_.store(), SelectionCommand::NewAddressesOf(planned)),
                planned);
  EXPECT_EQ(planned[0].values.judgement.sentence,
            "birgit@linden-werke.example is an address of Stefan Ebert.");
  EXPECT_EQ(planned[1].values.judgement.sentence, "") << "nobody else has it";
  EXPECT_EQ(PlanText(planned, false), "1 will be changed, 1 is left out.");
  EXPECT_EQ(PlanText(planned, true), "2 will be changed.");
}

TEST_F(SelectionCommandTest, TwoThatWouldGetOneAddressAreTold) {
  const ValueCommand command = Add("info@linden-werke.example");
  SelectionCommand& on = On(command, {kBirgit, kStefan});
  const std::vector<PlannedObject> planned = on.PlanAll(command);
  EXPECT_EQ(planned[0].values.judgement.sentence, "");
  EXPECT_EQ(planned[1].values.judgement.sentence,
            "info@linden-werke.example will be an address of Birgit Krämer, too.");
  EXPECT_EQ(PlanText(planned, false), "1 will be changed, 1 is left out.");
}

TEST_F(SelectionCommandTest, WhoLacksANameIsLeftOutAndTheOthersAreNot) {
  Set(kStefan, "givenName", {});
  const ValueCommand command = Add("{first}.{last}@linden-werke.example");
  SelectionCommand& on = On(command, {kBirgit, kStefan});
  const std::vector<PlannedObject> planned = on.PlanAll(command);
  EXPECT_EQ(planned[1].values.judgement.sentence, "It has no first name.");
  const Lines before = Get(kStefan, "otherMailbox");
  EXPECT_TRUE(on.Write(planned, true));
  EXPECT_EQ(Get(kStefan, "otherMailbox"), before);
  EXPECT_THAT(Get(kBirgit, "otherMailbox"),
              ::testing::Contains("birgit.kraemer@linden-werke.example"));
}

}  // namespace
}  // namespace pelora::session
