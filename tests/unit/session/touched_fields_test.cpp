// SPDX-License-Identifier: Apache-2.0
#include "hosts/session/touched_fields.h"

#include <gtest/gtest.h>

#include "hosts/headless/headless_user.h"
#include "hosts/resources/resource_file.h"
#include "resources/resource.h"

namespace pelora::session {
namespace {

class Idle final : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
  std::int32_t OnCommand(ControlId /*id*/, ControlNotification /*told*/) override { return 0; }
  void OnDestroy() override {}
};

/// The user tab's dialog with some of its fields.
class TouchedFieldsTest : public ::testing::Test {
 protected:
  TouchedFieldsTest() {
    dialog_.Open();
    dialog_.SetText(IDC_QUOTA_HARD, "500");
    dialog_.ComboBox(IDC_ACCOUNT_TYPE).Add("User");
    dialog_.ComboBox(IDC_ACCOUNT_TYPE).Add("Room");
    dialog_.ComboBox(IDC_ACCOUNT_TYPE).Select(0);
    fields_.Watch({{.name = "hidden",
                    .kind = FieldKind::kFlag,
                    .control = IDC_PELORA_HIDDEN,
                    .attributes = {"peloraHidden"}},
                   {.name = "hard",
                    .kind = FieldKind::kNumber,
                    .control = IDC_QUOTA_HARD,
                    .attributes = {"peloraQuotaHard"}},
                   {.name = "type",
                    .kind = FieldKind::kChoice,
                    .control = IDC_ACCOUNT_TYPE,
                    .attributes = {"peloraAdmin", "peloraResourceType"}},
                   {.name = "others",
                    .kind = FieldKind::kList,
                    .control = IDC_EMAIL_LIST,
                    .attributes = {"otherMailbox", "peloraAdmin"}}});
    fields_.Settle(dialog_);
  }

  /// Which of the attributes are wanted, after a look.
  std::string Wanted() {
    fields_.Look(dialog_);
    std::string wanted;
    for (const char* const name :
         {"peloraHidden", "PELORAQUOTAHARD", "peloraResourceType", "otherMailbox", "unknown"}) {
      if (fields_.IsWanted(name)) wanted += std::string(wanted.empty() ? "" : " ") + name;
    }
    return wanted;
  }

  Idle idle_;
  HeadlessDialog dialog_{resources::ResourceFile::Read(resources::EmbeddedResourceBytes())
                             .value.value()
                             .Dialog(IDD_PROPPAGE_USER)
                             .value.value(),
                         idle_};
  TouchedFields fields_;
};

TEST_F(TouchedFieldsTest, OnlyWhatShowsSomethingElseIsWanted) {
  EXPECT_EQ(Wanted(), "otherMailbox unknown");
  dialog_.SetCheck(IDC_PELORA_HIDDEN, CheckState::kChecked);
  EXPECT_EQ(Wanted(), "peloraHidden otherMailbox unknown");
  dialog_.SetText(IDC_QUOTA_HARD, "");
  EXPECT_EQ(Wanted(), "peloraHidden PELORAQUOTAHARD otherMailbox unknown");
  dialog_.ComboBox(IDC_ACCOUNT_TYPE).Select(1);
  EXPECT_EQ(Wanted(), "peloraHidden PELORAQUOTAHARD peloraResourceType otherMailbox unknown");
}

TEST_F(TouchedFieldsTest, WhatWasEditedBackAndForthWasEdited) {
  using Fields = std::vector<std::size_t>;
  fields_.Look(dialog_);
  EXPECT_EQ(fields_.TakeEdited(), Fields()) << "filling is no edit";
  dialog_.SetText(IDC_QUOTA_HARD, "700");
  fields_.Look(dialog_);
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  fields_.Look(dialog_);
  EXPECT_FALSE(fields_.IsChanged(1));
  EXPECT_EQ(fields_.TakeEdited(), Fields({1}));
  EXPECT_EQ(fields_.TakeEdited(), Fields()) << "told once";
  fields_.RemoveValue(1, dialog_);
  EXPECT_EQ(fields_.TakeEdited(), Fields({1}));
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  fields_.Settle(dialog_);
  EXPECT_EQ(fields_.TakeEdited(), Fields()) << "the page did that";
}

/// A page that notes what it hears.
class Listening final : public IDialogController {
 public:
  std::int32_t OnInitDialog(IDialog& /*dialog*/) override { return 0; }
  std::int32_t OnCommand(ControlId id, ControlNotification told) override {
    heard.emplace_back(id, told);
    return 0;
  }
  void OnDestroy() override {}

  std::vector<std::pair<ControlId, ControlNotification>> heard;
};

TEST_F(TouchedFieldsTest, APageThatHasNotAppliedHearsOnceMoreWhatWasChanged) {
  using enum ControlNotification;
  Listening page;
  fields_.TellChanged(page);
  EXPECT_TRUE(page.heard.empty());
  dialog_.SetCheck(IDC_PELORA_HIDDEN, CheckState::kChecked);
  dialog_.SetText(IDC_QUOTA_HARD, "7");
  dialog_.ComboBox(IDC_ACCOUNT_TYPE).Select(1);
  fields_.Look(dialog_);
  fields_.TellChanged(page);
  const std::vector<std::pair<ControlId, ControlNotification>> expected = {
      {IDC_PELORA_HIDDEN, kClicked},
      {IDC_QUOTA_HARD, kEditChange},
      {IDC_ACCOUNT_TYPE, kSelectionChange}};
  EXPECT_EQ(page.heard, expected);
}

TEST_F(TouchedFieldsTest, AReportAloneIsNoChange) {
  fields_.Touch(IDC_QUOTA_HARD);
  EXPECT_EQ(Wanted(), "otherMailbox unknown");
  EXPECT_FALSE(fields_.HasChangedFields());
}

TEST_F(TouchedFieldsTest, SetBackAFieldIsUnchanged) {
  dialog_.SetText(IDC_QUOTA_HARD, "600");
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
  EXPECT_TRUE(fields_.HasChangedFields());
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  EXPECT_EQ(Wanted(), "otherMailbox unknown");
  EXPECT_FALSE(fields_.HasChangedFields());
}

TEST_F(TouchedFieldsTest, WhatCouldNotBeWrittenStaysChangedThoughSetBack) {
  dialog_.SetText(IDC_QUOTA_HARD, "600");
  fields_.Look(dialog_);
  fields_.KeepUnwritten();
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
  fields_.Settle(dialog_);
  EXPECT_EQ(Wanted(), "otherMailbox unknown");
}

TEST_F(TouchedFieldsTest, WrittenItIsComparedWithWhatWasWritten) {
  dialog_.SetText(IDC_QUOTA_HARD, "600");
  fields_.Look(dialog_);
  fields_.Settle(dialog_);
  EXPECT_EQ(Wanted(), "otherMailbox unknown");
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
}

TEST_F(TouchedFieldsTest, AListIsLookedAtOnceItReportedSomething) {
  constexpr std::size_t kOthers = 3;
  dialog_.ListBox(IDC_EMAIL_LIST).Add("a@x.test");
  fields_.Settle(dialog_);
  dialog_.ListBox(IDC_EMAIL_LIST).Add("b@x.test");
  fields_.Look(dialog_);
  EXPECT_FALSE(fields_.IsChanged(kOthers)) << "nobody said anything";
  fields_.Touch(IDC_EMAIL_LIST);
  fields_.Look(dialog_);
  EXPECT_TRUE(fields_.IsChanged(kOthers));
}

TEST_F(TouchedFieldsTest, APageThatFillsItselfAnewInsteadOfApplyingIsUnchanged) {
  dialog_.SetText(IDC_QUOTA_HARD, "600");
  fields_.LookBeforeApply(dialog_);
  fields_.SettleIfRefilled(dialog_);
  EXPECT_TRUE(fields_.HasChangedFields()) << "it only refused";
  dialog_.SetText(IDC_QUOTA_HARD, "700");
  // The page's own filling is reported, and looked at.
  fields_.Look(dialog_);
  fields_.SettleIfRefilled(dialog_);
  EXPECT_FALSE(fields_.HasChangedFields());
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
}

TEST_F(TouchedFieldsTest, AButtonOfNoFieldMayHaveEditedAList) {
  constexpr std::size_t kOthers = 3;
  dialog_.ListBox(IDC_EMAIL_LIST).Add("a@x.test");
  fields_.Touch(IDC_EMAIL_MODIFY);
  fields_.Look(dialog_);
  EXPECT_TRUE(fields_.IsChanged(kOthers));
  EXPECT_FALSE(fields_.HasOtherEdits()) << "everything on the page is seen";
}

TEST_F(TouchedFieldsTest, WhatIsNotSeenWholeMayHaveBeenEdited) {
  TouchedFields fields;
  fields.Watch({{.name = "archive",
                 .kind = FieldKind::kList,
                 .control = IDC_FEATURE_LIST,
                 .attributes = {"peloraUserArchiveServers"},
                 .choose = IDC_FEATURE_PROPERTIES,
                 .entry = "archiver"}});
  fields.Settle(dialog_);
  EXPECT_FALSE(fields.HasOtherEdits());
  fields.Touch(IDC_FEATURE_PROPERTIES);
  EXPECT_TRUE(fields.HasOtherEdits());
  fields.Settle(dialog_);
  EXPECT_FALSE(fields.HasOtherEdits());
}

TEST_F(TouchedFieldsTest, AFieldGoesBackToWhatWasRead) {
  constexpr std::size_t kHidden = 0;
  constexpr std::size_t kHard = 1;
  constexpr std::size_t kType = 2;
  dialog_.SetStyle(IDC_PELORA_HIDDEN, ButtonStyle::kAutoThreeState);
  dialog_.SetCheck(IDC_PELORA_HIDDEN, CheckState::kIndeterminate);
  fields_.Settle(dialog_);
  dialog_.SetStyle(IDC_PELORA_HIDDEN, ButtonStyle::kAutoCheckBox);
  dialog_.SetCheck(IDC_PELORA_HIDDEN, CheckState::kChecked);
  dialog_.SetText(IDC_QUOTA_HARD, "600");
  dialog_.ComboBox(IDC_ACCOUNT_TYPE).Select(1);
  fields_.Look(dialog_);
  for (const std::size_t field : {kHidden, kHard, kType}) {
    EXPECT_TRUE(fields_.IsChanged(field)) << field;
    fields_.SetBack(field, dialog_, idle_);
    EXPECT_FALSE(fields_.IsChanged(field)) << field;
  }
  EXPECT_EQ(dialog_.Check(IDC_PELORA_HIDDEN), CheckState::kIndeterminate);
  EXPECT_EQ(dialog_.Style(IDC_PELORA_HIDDEN), ButtonStyle::kAutoThreeState);
  EXPECT_EQ(dialog_.Text(IDC_QUOTA_HARD), "500");
  EXPECT_EQ(dialog_.ComboBox(IDC_ACCOUNT_TYPE).Selection(), 0U);
}

TEST_F(TouchedFieldsTest, AValueThatIsTakenAwayIsAChangeThoughTheFieldWasEmpty) {
  constexpr std::size_t kHard = 1;
  dialog_.SetText(IDC_QUOTA_HARD, "");
  fields_.Settle(dialog_);
  fields_.RemoveValue(kHard, dialog_);
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
  dialog_.SetText(IDC_QUOTA_HARD, "7");
  fields_.Look(dialog_);
  dialog_.SetText(IDC_QUOTA_HARD, "");
  EXPECT_EQ(Wanted(), "otherMailbox unknown") << "typed over, it is as any other";
}

TEST_F(TouchedFieldsTest, AnAttributeThatAFieldOfAnotherKindWritesTooIsAlwaysWanted) {
  fields_.Look(dialog_);
  EXPECT_TRUE(fields_.IsWanted("peloraAdmin"));
  EXPECT_FALSE(fields_.IsWanted("peloraResourceType"));
}

}  // namespace
}  // namespace pelora::session
