// SPDX-License-Identifier: Apache-2.0
// What an extension writes into the new object, phase by phase, and what it tells of a failure.
#include "wizards/wizard_extension.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "directory/creation_failure.h"
#include "resources/resource.h"
#include "tests/unit/wizards/wizard_bench.h"
#include "wizards/wizard_ext_user.h"
#include "wizards/wizard_pages.h"

namespace pelora {
namespace {

using testing::FaultPoint;
using testing::OpenWizardPage;
using testing::PageBench;
using Lines = std::vector<std::string>;

const std::string kNew = "LDAP://CN=New,DC=x";

class WizardWriteTest : public ::testing::Test {
 protected:
  /// A contact's page with everything filled in, and a new object.
  WizardWriteTest() : page_(bench_) {
    object_ = bench_.faulty.Wrap(bench_.directory.MakeNewObject(kNew));
    EXPECT_EQ(page_.extension().SetObject(object_.Get()), S_OK);
  }

  void FillIn() {
    page_.Click(IDC_CREATE_PELORA);
    page_.Click(IDC_PELORA_HIDDEN);
    page_.Type(IDC_NEW_ADDRESS, "new@x");
  }
  /// A failure's answer is 0 and everything else's 1; both are successes.
  HRESULT Write(NewObjectPhase phase = NewObjectPhase::kPreCommit) {
    return page_.extension().WriteData(bench_.some_dialog(), phase);
  }
  /// The box that was shown: icon, caption and text.
  std::string Box() {
    EXPECT_EQ(bench_.messages.records().size(), 1U);
    if (bench_.messages.records().empty()) return {};
    const HeadlessMessageBox::Record& record = bench_.messages.records().back();
    EXPECT_EQ(record.owner, &page_.dialog());
    EXPECT_EQ(record.message.caption, "Pelora Error");
    return (record.message.icon == MessageIcon::kError ? "error: " : "warning: ") +
           record.message.text;
  }

  PageBench bench_;
  OpenWizardPage<CWizardExtContact> page_;
  Ref<IADs> object_;
};

TEST_F(WizardWriteTest, AnUncheckedBoxWritesThatThereIsNoAccountAndNothingElse) {
  EXPECT_EQ(Write(), 1);
  EXPECT_EQ(bench_.Writes(), Lines{"Put " + kNew + " peloraAccount 0"});
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_EQ(bench_.directory.Values(kNew),
            (testing::FakeAttributes{{"peloraAccount", Variant::Integer(0)}}));
}

TEST_F(WizardWriteTest, WhatIsTypedUnderABoxThatWasUncheckedAgainIsNotWritten) {
  FillIn();
  page_.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(Write(), 1);
  EXPECT_EQ(bench_.Writes(), Lines{"Put " + kNew + " peloraAccount 0"});
}

TEST_F(WizardWriteTest, ACheckedBoxWritesTheAccountFirstAndThenTheFields) {
  FillIn();
  EXPECT_EQ(Write(), 1);
  EXPECT_EQ(bench_.Writes(),
            (Lines{"Put " + kNew + " peloraAccount 1", "Put " + kNew + " peloraHidden 1",
                   "Put " + kNew + " mail \"new@x\""}));
  EXPECT_EQ(bench_.messages.records().size(), 0U);
}

TEST_F(WizardWriteTest, OnlyThePreCommitPhaseWrites) {
  FillIn();
  using enum NewObjectPhase;
  for (const NewObjectPhase phase : {kCommit, kPostCommit, kCleanup, NewObjectPhase{0}}) {
    EXPECT_EQ(Write(phase), 1) << static_cast<int>(phase);
  }
  EXPECT_EQ(bench_.Writes(), Lines{});
  // Without an object neither.
  EXPECT_EQ(page_.extension().SetObject(nullptr), S_OK);
  EXPECT_EQ(Write(kPostCommit), 1);
  EXPECT_EQ(bench_.messages.records().size(), 0U);
}

TEST_F(WizardWriteTest, EveryPreCommitWritesEverythingIntoTheObjectOfTheTime) {
  FillIn();
  EXPECT_EQ(Write(), 1);
  const Ref<IADs> anew = bench_.directory.MakeNewObject("LDAP://CN=Anew,DC=x");
  EXPECT_EQ(page_.extension().SetObject(anew.Get()), S_OK);
  bench_.directory.ClearCalls();
  EXPECT_EQ(Write(), 1);
  EXPECT_EQ(bench_.Writes(), (Lines{"Put LDAP://CN=Anew,DC=x peloraAccount 1",
                                    "Put LDAP://CN=Anew,DC=x peloraHidden 1",
                                    "Put LDAP://CN=Anew,DC=x mail \"new@x\""}));
}

TEST_F(WizardWriteTest, AnObjectThatIsTakenAwayIsLetGo) {
  EXPECT_EQ(page_.extension().SetObject(nullptr), S_OK);
  object_.Reset();
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
  EXPECT_EQ(Write(), 0);
  EXPECT_EQ(Box(),
            "error: Unable to get connection with the ldap user\r\n\r\nError code: 0X80005009");
}

TEST_F(WizardWriteTest, AnObjectWithoutTheInterfaceIsReportedAndNotWritten) {
  bench_.faulty.plan().Fail(FaultPoint::kQueryInterface, 1, E_NOINTERFACE);
  FillIn();
  EXPECT_EQ(Write(), 0);
  EXPECT_EQ(Box(),
            "error: Unable to get connection with the ldap user\r\n\r\nError code: 0X80004002");
  EXPECT_EQ(bench_.Writes(), Lines{});
}

TEST_F(WizardWriteTest, AWarningInsteadOfTheInterfaceIsAFailureToo) {
  bench_.faulty.plan().Fail(FaultPoint::kQueryInterface, 1, S_FALSE);
  EXPECT_EQ(Write(), 0);
  EXPECT_EQ(Box(), "warning: Unable to get connection with the ldap user\r\n\r\nError code: 0X1");
}

TEST_F(WizardWriteTest, AFailedFieldIsNamedAndEndsTheWriting) {
  const Lines fields = {"peloraAccount", "peloraHidden", "mail"};
  FillIn();
  for (std::size_t i = 0; i < fields.size(); ++i) {
    bench_.directory.ClearCalls();
    bench_.messages.ClearRecords();
    bench_.faulty.plan().Fail(FaultPoint::kPut, i + 1, E_ACCESSDENIED);
    EXPECT_EQ(Write(), 0) << fields[i];
    EXPECT_EQ(Box(), "error: Failed on field '" + fields[i] + "\r\n\r\nError code: 0X80070005");
    EXPECT_EQ(bench_.Writes().size(), i);
  }
}

TEST_F(WizardWriteTest, TheDirectorysSuccessCodesAreNoFailure) {
  FillIn();
  bench_.faulty.plan().Answer(FaultPoint::kPut, 1, S_ADS_ERRORSOCCURRED);
  EXPECT_EQ(Write(), 1);
  EXPECT_TRUE(bench_.messages.records().empty());
  EXPECT_EQ(bench_.Writes().size(), 3U);
}

TEST_F(WizardWriteTest, AChangeThatCannotBeWrittenCountsAsNotWritten) {
  FillIn();
  page_.wizard().RegisterCollect([](ChangeList& changes) {
    changes.push_back({.name = "otherMailbox", .type = ChangeType::kMultiValued});
    return S_OK;
  });
  EXPECT_EQ(Write(), 0);
  EXPECT_EQ(Box(), "warning: Failed on field 'otherMailbox\r\n\r\nError code: 0X5011");
}

TEST_F(WizardWriteTest, AFailedWriteStillLetsTheObjectBeMade) {
  FillIn();
  bench_.faulty.plan().FailAttribute(FaultPoint::kPut, "peloraAccount", 1, E_ACCESSDENIED);
  EXPECT_TRUE(SUCCEEDED(Write()));
  EXPECT_EQ(object_->SetInfo(), S_OK);
  EXPECT_EQ(bench_.directory.Values(kNew), testing::FakeAttributes{});
}

TEST_F(WizardWriteTest, EmptyFieldsArePassedOverAndNotCleared) {
  page_.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(Write(), 1);
  EXPECT_EQ(bench_.Writes(),
            (Lines{"Put " + kNew + " peloraAccount 1", "Put " + kNew + " peloraHidden 0"}));
}

TEST_F(WizardWriteTest, NothingStaysBound) {
  EXPECT_EQ(bench_.directory.live_objects(), 1U);
  EXPECT_EQ(Write(), 1);
  bench_.faulty.plan().Fail(FaultPoint::kPut, 1, E_FAIL);
  EXPECT_EQ(Write(), 0);
  EXPECT_EQ(page_.extension().SetObject(nullptr), S_OK);
  object_.Reset();
  EXPECT_EQ(bench_.directory.live_objects(), 0U);
}

TEST_F(WizardWriteTest, TheSummarySaysWhetherPeloraIsEnabled) {
  std::string text = "old";
  EXPECT_EQ(page_.extension().GetSummaryInfo(text), S_OK);
  EXPECT_EQ(text, "Pelora disabled");
  page_.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page_.extension().GetSummaryInfo(text), S_OK);
  EXPECT_EQ(text, "Pelora enabled");
}

TEST_F(WizardWriteTest, ANameInUseIsExplainedWithoutACode) {
  for (const std::uint32_t phase : {1U, 2U, 3U, 4U, 0U}) {
    bench_.messages.ClearRecords();
    EXPECT_EQ(page_.extension().OnError(bench_.some_dialog(), kObjectAlreadyExists,
                                        static_cast<NewObjectPhase>(phase)),
              S_OK);
    EXPECT_EQ(Box(),
              "warning: The new object cannot be created because the name is already in use.\r\n"
              "Please select a different name and try again.");
  }
}

TEST_F(WizardWriteTest, AnyOtherFailureShowsItsCode) {
  EXPECT_EQ(page_.extension().OnError(nullptr, E_ACCESSDENIED, NewObjectPhase::kCommit), S_OK);
  EXPECT_EQ(Box(), "error: Unknown error occured\r\n\r\nError code: 0X80070005");
  bench_.messages.ClearRecords();
  EXPECT_EQ(page_.extension().OnError(nullptr, E_ADS_OBJECT_EXISTS, NewObjectPhase::kCommit), S_OK);
  EXPECT_EQ(Box(), "error: Unknown error occured\r\n\r\nError code: 0X8000500E");
  bench_.messages.ClearRecords();
  EXPECT_EQ(page_.extension().OnError(nullptr, S_OK, NewObjectPhase::kCommit), S_OK);
  EXPECT_EQ(Box(), "warning: Unknown error occured");
}

TEST(CreationFailureTest, CanBeHadWithoutAWindow) {
  EXPECT_EQ(DescribeCreationFailure(kObjectAlreadyExists).status, S_OK);
  EXPECT_EQ(DescribeCreationFailure(E_FAIL).status, E_FAIL);
  EXPECT_EQ(DescribeCreationFailure(E_FAIL).message, "");
}

/// A page whose collecting fails, or throws.
class Uncollectable : public CWizardPage<CWizardExtension> {
 public:
  explicit Uncollectable(const Platform& platform)
      : CWizardPage(platform, {.dialog_template = 215, .title = "Uncollectable"}) {
    RegisterCollect([this](ChangeList& changes) -> HRESULT {
      changes.push_back({.value = "a", .name = "mail"});
      if (throws) throw std::bad_alloc();
      return E_FAIL;
    });
    Route({{254, ControlNotification::kClicked, [this] { return OnCreateClicked(); }}});
  }

  bool throws = false;

 protected:
  ~Uncollectable() override = default;
};

TEST(WizardCollect, AFailureIsShownAndNothingIsWritten) {
  PageBench bench;
  OpenWizardPage<Uncollectable> page(bench);
  const Ref<IADs> object = bench.directory.MakeNewObject(kNew);
  EXPECT_EQ(page.extension().SetObject(object.Get()), S_OK);
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 0);
  ASSERT_EQ(bench.messages.records().size(), 1U);
  EXPECT_EQ(bench.messages.records()[0].message.text,
            "Unable to collect pelora attributes\r\n\r\nError code: 0X80004005");
  page.wizard().throws = true;
  EXPECT_EQ(page.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 0);
  ASSERT_EQ(bench.messages.records().size(), 2U);
  EXPECT_EQ(bench.messages.records()[1].message.text,
            "Unknown error occured\r\n\r\nError code: 0X8007000E");
  EXPECT_EQ(bench.Writes(), Lines{});
  // An unchecked box asks no field for anything.
  page.Click(IDC_CREATE_PELORA);
  EXPECT_EQ(page.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 1);
}

TEST(WizardCollect, FieldsWhoseDialogIsGoneAreNotGuessed) {
  PageBench bench;
  OpenWizardPage<CWizardExtContact> page(bench);
  page.Click(IDC_CREATE_PELORA);
  page.dialog().Close();
  const Ref<IADs> object = bench.directory.MakeNewObject(kNew);
  EXPECT_EQ(page.extension().SetObject(object.Get()), S_OK);
  EXPECT_EQ(page.extension().WriteData(nullptr, NewObjectPhase::kPreCommit), 0);
  EXPECT_EQ(bench.Writes(), Lines{});
}

}  // namespace
}  // namespace pelora
