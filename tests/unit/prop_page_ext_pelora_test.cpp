// SPDX-License-Identifier: Apache-2.0
#include "pages/prop_page_ext_pelora.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "hosts/headless/headless_property_sheet.h"
#include "pages/snap_in_property_page.h"
#include "resources/resource.h"
#include "tests/support/selection_data_object.h"
#include "tests/unit/page_bench.h"

namespace pelora {
namespace {

using testing::DirectoryCall;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using testing::SelectionDataObject;

const std::string kAda = "LDAP://CN=Ada,DC=x";
const std::string kBob = "LDAP://CN=Bob,DC=x";

struct BoxRow {
  ControlId box;
  std::string attribute;
};

const std::vector<BoxRow> kBoxes = {{IDC_PELORA_ACCOUNT, "peloraAccount"},
                                    {IDC_PELORA_HIDDEN, "peloraHidden"}};

/// A page that holds the group and one validator that never lets anything through.
class GroupPage final : public CSnapInPropertyPage {
 public:
  explicit GroupPage(const Platform& platform)
      : CSnapInPropertyPage(platform, IID_IADs, {}, IDD_PROPPAGE_USER, "Group"), group_(*this) {
    Add(group_);
    RegisterValidate([this](std::string* message) {
      if (!refuse_all) return S_OK;
      *message = "refused";
      return E_FAIL;
    });
  }

  bool refuse_all = false;

 private:
  ~GroupPage() override = default;

  CPropPageExtPelora group_;
};

class AccountGroupTest : public ::testing::Test {
 protected:
  void Open(const std::vector<std::string>& paths) {
    SelectionDataObject selection(paths);
    ASSERT_EQ(page_->Initialize(&selection), S_OK);
    ASSERT_EQ(page_->AddPages(sheet_.PageTaker()), S_OK);
    sheet_.Show();
    host_.directory.ClearCalls();
  }
  /// Applies as OK does, modified or not; whether the page has applied.
  bool ApplyPage() { return page_->OnPageNotification(PageNotification::kApply) == kPageApplied; }
  HeadlessDialog& Dialog() { return *sheet_.Dialog(0); }
  std::vector<std::string> Writes() const {
    return host_.directory.Log({DirectoryCall::Kind::kPut, DirectoryCall::Kind::kPutEx});
  }

  testing::PageBench host_;
  Ref<GroupPage> page_ = Ref<GroupPage>::Adopt(new GroupPage(host_.platform));
  HeadlessPropertySheet sheet_{host_.templates()};
};

TEST_F(AccountGroupTest, AnAbsentAttributeIsAnUncheckedTwoStateBox) {
  host_.directory.AddObject(kAda);
  Open({kAda});
  for (const BoxRow& row : kBoxes) {
    EXPECT_EQ(Dialog().Style(row.box), ButtonStyle::kAutoCheckBox);
    EXPECT_EQ(Dialog().Check(row.box), CheckState::kUnchecked);
  }
  EXPECT_FALSE(sheet_.IsApplyEnabled());
}

TEST_F(AccountGroupTest, UntouchedBoxesWriteNothing) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(1)}});
  Open({kAda});
  EXPECT_TRUE(ApplyPage());
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_F(AccountGroupTest, EachBoxWritesItsOwnAttributeWhenClicked) {
  for (const BoxRow& row : kBoxes) {
    host_.directory.AddObject(kAda);
    testing::PageBench& host = host_;
    HeadlessPropertySheet sheet(host.templates());
    const auto page = Ref<GroupPage>::Adopt(new GroupPage(host.platform));
    SelectionDataObject selection({kAda});
    ASSERT_EQ(page->Initialize(&selection), S_OK);
    ASSERT_EQ(page->AddPages(sheet.PageTaker()), S_OK);
    sheet.Show();
    host.directory.ClearCalls();
    EXPECT_EQ(sheet.User().Click(row.box), UserAnswer::kDone);
    EXPECT_TRUE(sheet.IsApplyEnabled());
    EXPECT_TRUE(sheet.Apply());
    EXPECT_FALSE(sheet.IsApplyEnabled());
    EXPECT_THAT(Writes(), ElementsAre("Put " + kAda + " " + row.attribute + " 1"));
  }
}

TEST_F(AccountGroupTest, AccountIsWrittenBeforeHidden) {
  host_.directory.AddObject(kAda);
  Open({kAda});
  sheet_.User().Click(IDC_PELORA_HIDDEN);
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_TRUE(sheet_.Apply());
  EXPECT_THAT(Writes(),
              ElementsAre("Put " + kAda + " peloraAccount 1", "Put " + kAda + " peloraHidden 1"));
}

TEST_F(AccountGroupTest, AClickedBoxIsWrittenByEveryApplyUntilThePageIsLoadedAgain) {
  host_.directory.AddObject(kAda);
  Open({kAda});
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  for (int apply = 0; apply < 2; ++apply) {
    host_.directory.ClearCalls();
    EXPECT_TRUE(ApplyPage());
    EXPECT_THAT(Writes(), ElementsAre("Put " + kAda + " peloraAccount 1"));
  }
  host_.directory.ClearCalls();
  EXPECT_EQ(page_->InitPage(), S_OK);
  EXPECT_TRUE(ApplyPage());
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_F(AccountGroupTest, UncheckingWritesZeroAndRemovesNothing) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(1)}});
  Open({kAda});
  page_->refuse_all = true;
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_TRUE(sheet_.Apply()) << "and nothing is validated any more";
  EXPECT_EQ(host_.directory.Value(kAda, "peloraAccount"), Variant::Integer(0));
}

TEST_F(AccountGroupTest, UncheckingTheAccountTouchesNoOtherControl) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(1)}});
  Open({kAda});
  std::vector<std::pair<bool, bool>> before;
  for (const HeadlessControl& control : Dialog().controls()) {
    before.emplace_back(control.enabled, control.shown);
  }
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  std::vector<std::pair<bool, bool>> after;
  for (const HeadlessControl& control : Dialog().controls()) {
    after.emplace_back(control.enabled, control.shown);
  }
  EXPECT_EQ(before, after);
}

TEST_F(AccountGroupTest, TwoClicksStillWriteAndNormaliseTheValue) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(2)}});
  Open({kAda});
  EXPECT_EQ(Dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kChecked);
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_TRUE(sheet_.Apply());
  EXPECT_THAT(Writes(), ElementsAre("Put " + kAda + " peloraAccount 1"));
}

TEST_F(AccountGroupTest, DifferingObjectsShowAnIndeterminateBoxThatIsNotWritten) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(1)}});
  host_.directory.AddObject(kBob);
  Open({kAda, kBob});
  EXPECT_EQ(Dialog().Style(IDC_PELORA_ACCOUNT), ButtonStyle::kAutoThreeState);
  EXPECT_EQ(Dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kIndeterminate);
  page_->refuse_all = true;
  EXPECT_TRUE(ApplyPage()) << "an indeterminate box skips the validation too";
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_F(AccountGroupTest, AClickTakesABoxOutOfItsThirdStateForGood) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(1)}});
  host_.directory.AddObject(kBob);
  Open({kAda, kBob});
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_EQ(Dialog().Style(IDC_PELORA_ACCOUNT), ButtonStyle::kAutoCheckBox);
  EXPECT_EQ(Dialog().Check(IDC_PELORA_ACCOUNT), CheckState::kUnchecked)
      << "a three-state box goes from indeterminate to unchecked";
  for (const CheckState state :
       {CheckState::kChecked, CheckState::kUnchecked, CheckState::kChecked}) {
    sheet_.User().Click(IDC_PELORA_ACCOUNT);
    EXPECT_EQ(Dialog().Check(IDC_PELORA_ACCOUNT), state);
  }
}

TEST_F(AccountGroupTest, AClickedBoxIsWrittenToEverySelectedObject) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(1)}});
  host_.directory.AddObject(kBob);
  Open({kAda, kBob});
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  EXPECT_TRUE(sheet_.Apply());
  EXPECT_THAT(Writes(),
              ElementsAre("Put " + kAda + " peloraAccount 0", "Put " + kBob + " peloraAccount 0"));
}

TEST_F(AccountGroupTest, ACheckedAccountLetsTheValidatorsRun) {
  host_.directory.AddObject(kAda, {{"peloraAccount", Variant::Integer(1)}});
  Open({kAda});
  page_->refuse_all = true;
  EXPECT_FALSE(ApplyPage());
  ASSERT_EQ(host_.messages.records().size(), 1U);
  EXPECT_EQ(host_.messages.records().front().message.text,
            "Validation of input fields failed: refused\r\n\r\nError code: 0X80004005");
}

TEST_F(AccountGroupTest, ALoadForgetsEarlierClicks) {
  host_.directory.AddObject(kAda);
  Open({kAda});
  sheet_.User().Click(IDC_PELORA_ACCOUNT);
  sheet_.User().Click(IDC_PELORA_HIDDEN);
  EXPECT_EQ(page_->InitPage(), S_OK);
  EXPECT_TRUE(ApplyPage());
  EXPECT_THAT(Writes(), IsEmpty());
}

TEST_F(AccountGroupTest, ClickHandlersAnswerZero) {
  host_.directory.AddObject(kAda);
  Open({kAda});
  for (const BoxRow& row : kBoxes) {
    EXPECT_EQ(page_->OnCommand(row.box, ControlNotification::kClicked), 0);
  }
}

}  // namespace
}  // namespace pelora
