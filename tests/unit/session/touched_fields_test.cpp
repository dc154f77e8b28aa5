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
class TouchedFieldsTest : public testing::Test {
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

TEST_F(TouchedFieldsTest, AFieldWhoseControlReportedSomethingIsWantedThoughItShowsTheSame) {
  fields_.Touch(IDC_QUOTA_HARD);
  fields_.Touch(IDC_EMAIL_ADD);
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
  fields_.Settle(dialog_);
  EXPECT_EQ(Wanted(), "otherMailbox unknown");
}

TEST_F(TouchedFieldsTest, WhatWasSeenTouchedStaysSoUntilItIsSettled) {
  dialog_.SetText(IDC_QUOTA_HARD, "600");
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
  dialog_.SetText(IDC_QUOTA_HARD, "500");
  EXPECT_EQ(Wanted(), "PELORAQUOTAHARD otherMailbox unknown");
  fields_.Settle(dialog_);
  EXPECT_EQ(Wanted(), "otherMailbox unknown");
}

TEST_F(TouchedFieldsTest, AnAttributeThatAFieldOfAnotherKindWritesTooIsAlwaysWanted) {
  fields_.Look(dialog_);
  EXPECT_TRUE(fields_.IsWanted("peloraAdmin"));
  EXPECT_FALSE(fields_.IsWanted("peloraResourceType"));
}

}  // namespace
}  // namespace pelora::session
